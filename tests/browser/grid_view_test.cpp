// The grid of all records.
#include <QGroupBox>
#include <QHeaderView>
#include <QTableView>

#include "tests/browser/browser_bench.h"

namespace stelvan::test {
namespace {

class GridViewTest : public BrowserBench {
protected:
    void SetUp() override {
        BrowserBench::SetUp();
        useModel("gem.mdb");
    }
    void viewAll() { form.tspData->setCurrentIndex(1); }
    void viewProperties() { form.tspData->setCurrentIndex(0); }
    [[nodiscard]] QAbstractItemModel* rows() const { return form.DBGridGEM->model(); }
    [[nodiscard]] int column(const QString& name) const {
        for (int c = 0; c < rows()->columnCount(); ++c)
            if (rows()->headerData(c, Qt::Horizontal).toString() == name) return c;
        ADD_FAILURE() << "no column " << name.toStdString();
        return 0;
    }
    [[nodiscard]] QString cell(int row, const QString& name) const {
        return rows()->index(row, column(name)).data().toString();
    }
};

TEST_F(GridViewTest, VariableCategoryShowsItsRowsWithTwoColumnsHiddenAndFlagsAsWords) {
    click("CSTVSV");
    viewAll();
    EXPECT_EQ(form.frontFrame(), 7);
    ASSERT_NE(rows(), nullptr);
    EXPECT_EQ(rows()->rowCount(), state.current.records->recordCount());
    EXPECT_EQ(cell(0, "var_id"), form[txtVarID].text());
    for (int c = 0; c < rows()->columnCount(); ++c) {
        const QString name = rows()->headerData(c, Qt::Horizontal).toString();
        EXPECT_EQ(form.DBGridGEM->isColumnHidden(c),
                  name == "var_loadchild" || name == "var_canadd")
            << name.toStdString();
    }
    for (int r = 0; r < rows()->rowCount(); ++r)
        EXPECT_TRUE(QStringList({"TRUE", "FALSE", ""}).contains(cell(r, "var_allowduplicates")));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(GridViewTest, GridFollowsTheCategoryWhileItsTabIsSelected) {
    click("CSTALM");
    viewAll();
    click("CSTVEC");
    EXPECT_EQ(form.frontFrame(), 7);
    EXPECT_EQ(rows()->rowCount(), state.current.records->recordCount());
    EXPECT_TRUE(form.DBGridGEM->isColumnHidden(column("var_canadd")));
}

TEST_F(GridViewTest, AlarmCategoryHidesNoColumnAndItsNamesTakeWhatNumbersDoNotNeed) {
    click("CSTVSV");
    viewAll();
    click("CSTALM");
    for (int c = 0; c < rows()->columnCount(); ++c) {
        EXPECT_FALSE(form.DBGridGEM->isColumnHidden(c));
        EXPECT_GE(form.DBGridGEM->columnWidth(c),
                  form.DBGridGEM->horizontalHeader()->sectionSizeHint(c));
    }
    EXPECT_GT(form.DBGridGEM->columnWidth(column("alm_name")),
              form.DBGridGEM->columnWidth(column("alm_id")));
    EXPECT_TRUE(QStringList({"TRUE", "FALSE"}).contains(cell(0, "alm_enable")));
}

TEST_F(GridViewTest, WidthsOfVariablesFollowTheCaptionsAndNeverClipThem) {
    click("GEMSDV");
    viewAll();
    const QHeaderView* header = form.DBGridGEM->horizontalHeader();
    for (int c = 0; c < rows()->columnCount(); ++c) {
        if (form.DBGridGEM->isColumnHidden(c)) continue;
        const int caption = header->fontMetrics().horizontalAdvance(
            rows()->headerData(c, Qt::Horizontal).toString());
        EXPECT_GE(form.DBGridGEM->columnWidth(c), static_cast<int>(caption * 1.2));
        EXPECT_GE(form.DBGridGEM->columnWidth(c), header->sectionSizeHint(c));
    }
}

TEST_F(GridViewTest, FlagColumnsAreRecognisedWhateverTheirLetterCase) {
    click("CSTRPT");
    viewAll();
    EXPECT_TRUE(QStringList({"TRUE", "FALSE"}).contains(cell(0, "rpt_default")));
}

TEST_F(GridViewTest, WhileTheGridIsShownTheNavigatorCannotBeUsed) {
    click("CSTALM");
    viewAll();
    EXPECT_FALSE(form.nav.fraDBOperation->isEnabled());
    for (const QPushButton* button : {form.nav.cmdNew, form.nav.cmdNext, form.nav.cmdDelete})
        EXPECT_FALSE(button->isEnabled());
    viewProperties();
    EXPECT_TRUE(form.nav.fraDBOperation->isEnabled());
    EXPECT_TRUE(form.nav.cmdNext->isEnabled());
    EXPECT_EQ(form.frontFrame(), 2);
    EXPECT_EQ(rows(), nullptr);
}

TEST_F(GridViewTest, BeforeAnyCategoryTheFailureIsReportedAndTheTabGoesBack) {
    viewAll();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith("ERROR(91) [frmMain.tspData_Click.0]:"));
    EXPECT_EQ(form.tspData->currentIndex(), 0);
    EXPECT_EQ(form.frontFrame(), 0);
    EXPECT_TRUE(form.nav.fraDBOperation->isEnabled());
}

TEST_F(GridViewTest, EmptyCategoryShowsHeadersAndNoRows) {
    useModel("gem_empty.mdb");
    click("CSTEVT");
    viewAll();
    EXPECT_EQ(rows()->rowCount(), 0);
    EXPECT_EQ(rows()->headerData(0, Qt::Horizontal).toString(), "evt_id");
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(GridViewTest, SelectingInTheGridLeavesTheCurrentRecordAlone) {
    click("CSTRPT");
    view.cmdNext_Click();
    const auto before = state.current.records->bookmark();
    viewAll();
    form.DBGridGEM->selectRow(10);
    form.DBGridGEM->scrollToBottom();
    viewProperties();
    EXPECT_EQ(state.current.records->bookmark(), before);
    EXPECT_EQ(state.current.position, 2);
}

TEST_F(GridViewTest, CellsCannotBeEdited) {
    click("CSTALM");
    viewAll();
    EXPECT_FALSE(rows()->flags(rows()->index(0, 1)).testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(form.DBGridGEM->editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST_F(GridViewTest, TextsOfSeveralLinesAreDrawnAsOneAndToldWhole) {
    click("CSTVSV");
    viewAll();
    bool seen = false;
    for (int r = 0; r < rows()->rowCount(); ++r) {
        const QModelIndex index = rows()->index(r, column("var_desc"));
        EXPECT_FALSE(index.data().toString().contains('\n'));
        seen = seen || index.data(Qt::ToolTipRole).toString().contains('\n');
    }
    EXPECT_TRUE(seen);
}

TEST_F(GridViewTest, NullIsAnEmptyCell) {
    for (const char* model : {"gem.mdb", "gem_int_flags.mdb"}) {
        useModel(model);
        for (std::int16_t index = 1; index <= gem::kCategories; ++index) {
            tree.tvwSECSItem_NodeClick(form::toQt(gem::categoryAt(index).key));
            viewAll();
            for (int r = 0; r < rows()->rowCount(); ++r) {
                for (int c = 0; c < rows()->columnCount(); ++c) {
                    const QString text = rows()->index(r, c).data().toString();
                    EXPECT_NE(text, "(unreadable)");
                    const db::Value stored =
                        state.current.records->storedField(r, static_cast<std::size_t>(c));
                    EXPECT_TRUE(!std::holds_alternative<jet::Null>(stored) || text.isEmpty());
                }
            }
            viewProperties();
        }
    }
}

}  // namespace
}  // namespace stelvan::test
