// The shipped models in the window: every record of every category shows itself, and no box
// appears.
#include <QLabel>
#include <QTableView>

#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

constexpr std::int16_t kCategories = gem::CSTRPT;

class ShippedModelWindow : public WindowBench, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const auto copy =
            scratch.copyOf(std::string(STELVAN_BINARY_DIR "/share/stelvan/") + GetParam());
        window = std::make_unique<app::FrmMain>(dialogs, QString());
        window->start(form::toQt(copy.string()));
        window->show();
        ASSERT_EQ(dialogs.texts(), QStringList());
    }

    /// Pages from the first record to the last; how many there were.
    int pageThrough(std::int16_t category) {
        clickCategory(category);
        const int count = static_cast<int>(state().current.records->recordCount());
        for (int position = 1; position <= count; ++position) {
            EXPECT_EQ(form().nav.lblRecNumber->text(),
                      QStringLiteral("%1 of %2").arg(position).arg(count));
            if (position < count) press(form().nav.cmdNext);
        }
        EXPECT_EQ(dialogs.texts(), QStringList()) << "category " << category;
        return count;
    }
};

TEST_P(ShippedModelWindow, EveryCategoryPagesFromFirstToLastWithoutABox) {
    int records = 0;
    for (std::int16_t category = 1; category <= kCategories; ++category)
        records += pageThrough(category);
    EXPECT_GE(records, 21 + 57 + 12 + 30);
}

TEST_P(ShippedModelWindow, EveryCategoryShowsInTheGridWithoutABox) {
    for (std::int16_t category = 1; category <= kCategories; ++category) {
        clickCategory(category);
        form().tspData->setCurrentIndex(1);
        QCoreApplication::processEvents();
        EXPECT_EQ(form().DBGridGEM->model()->rowCount(), state().current.records->recordCount());
        form().tspData->setCurrentIndex(0);
    }
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_P(ShippedModelWindow, EveryStandardVariableShowsItsNameGroupAndText) {
    for (const auto category : {gem::GEMVDV, gem::GEMSDV, gem::GEMVEC}) {
        clickCategory(category);
        const int count = static_cast<int>(state().current.records->recordCount());
        for (int position = 1; position <= count; ++position) {
            for (const char* name :
                 {"txtVarID", "txtVarName", "txtVarGroup", "txtVarDesc", "cmbVarFormat"}) {
                EXPECT_FALSE(field(name).text().isEmpty()) << name << " of record " << position;
                EXPECT_NE(field(name).text(), "NULL") << name << " of record " << position;
            }
            if (position < count) press(form().nav.cmdNext);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Templates, ShippedModelWindow,
                         ::testing::Values("gem-template.mdb", "demo-template.mdb"),
                         [](const auto& kind) {
                             return std::string(kind.index == 0 ? "Standard" : "Demo");
                         });

}  // namespace
}  // namespace stelvan::test
