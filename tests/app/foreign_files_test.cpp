// Files that are no model, or a damaged one: every failure is told, nothing is left on screen, and
// the file stays as it was.
#include <QAbstractItemModel>
#include <QLabel>
#include <QTabBar>
#include <QTableView>
#include <fstream>
#include <iterator>

#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class ForeignFiles : public WindowBench {
protected:
    void SetUp() override {
        window = std::make_unique<app::FrmMain>(dialogs, QString());
        window->show();
    }

    /// Looks at every category in both views; how many could be loaded.
    int browseAll() {
        int loaded = 0;
        for (std::int16_t index = 1; index <= gem::kCategories; ++index) {
            const auto before = dialogs.messages.size();
            all().browser.tree.tvwSECSItem_NodeClick(form::toQt(gem::categoryAt(index).key));
            if (state().category == gem::NO_CATEGORY) {
                EXPECT_EQ(dialogs.messages.size(), before + 1);
                EXPECT_EQ(form().frontFrame(), 0);
                EXPECT_EQ(form().nav.lblRecNumber->text(), "0 of 0");
                continue;
            }
            ++loaded;
            for (int step = 0; step < 400 && form().nav.cmdNext->isEnabled(); ++step)
                form().nav.cmdNext->click();
            form().tspData->setCurrentIndex(1);
            const QAbstractItemModel* rows = form().DBGridGEM->model();
            for (int row = 0; rows != nullptr && row < rows->rowCount(); ++row)
                for (int column = 0; column < rows->columnCount(); ++column)
                    rows->index(row, column).data();
            form().tspData->setCurrentIndex(0);
        }
        return loaded;
    }
};

TEST_F(ForeignFiles, FilesThatAreNoModelGiveOneReportForEachClick) {
    for (const char* name :
         {"access97", "access2007", "text_file", "zero_length", "wrong_signature"}) {
        const auto copy = scratch.copyOf(model(std::string("refused/") + name + "/gem.mdb"));
        const std::string before = bytesOf(copy);
        window->start(form::toQt(copy.string()));
        EXPECT_EQ(browseAll(), 0) << name;
        EXPECT_EQ(bytesOf(copy), before) << name;
        for (const QString& text : dialogs.texts())
            EXPECT_TRUE(text.startsWith("ERROR(-2147467259) [frmMain.lLoadData.0]: "))
                << text.toStdString();
    }
}

TEST_F(ForeignFiles, DamagedModelsAreShownAsFarAsTheyCanBeRead) {
    for (const char* name : {"truncated", "truncated_at_page", "damaged_catalogue", "damaged_ring",
                             "damaged_rows", "damaged_memo"}) {
        dialogs.messages.clear();
        const auto copy = scratch.copyOf(model(std::string("refused/") + name + "/gem.mdb"));
        const std::string before = bytesOf(copy);
        window->start(form::toQt(copy.string()));
        browseAll();
        EXPECT_FALSE(dialogs.messages.empty()) << name;
        for (const QString& text : dialogs.texts())
            EXPECT_TRUE(text.startsWith("ERROR(")) << text.toStdString();
        EXPECT_EQ(bytesOf(copy), before) << name;
    }
}

TEST_F(ForeignFiles, MissingFileAndFolderAreReported) {
    for (const std::string& path :
         {std::string("/no/such/folder/gem.mdb"), scratch.path().string()}) {
        dialogs.messages.clear();
        window->start(form::toQt(path));
        EXPECT_EQ(browseAll(), 0);
        EXPECT_EQ(dialogs.messages.size(), static_cast<std::size_t>(gem::kCategories));
    }
}

}  // namespace
}  // namespace stelvan::test
