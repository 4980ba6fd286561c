// The variables of a report: both tables in one list, its text sort, its order while editing, its
// rights.
#include "links/report_variables.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "tests/links/link_bench.h"

namespace stelvan::links {
namespace {

constexpr int kOrder = 4;

class ReportVariablesTest : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.variables;

    void SetUp() override {
        LinkBench::SetUp();
        useDatabase("gem.mdb");
        openFrame(gem::CSTRPT);
        editor.selected->setHeaders({"Name", "ID", "Type", "Gem", "Order"});
    }

    void show(const QString& report) {
        form[txtRptID].setText(report);
        reportVariables.lUpdateRptVarList();
    }
};

TEST_F(ReportVariablesTest, ThePoolHoldsGemVariablesFirstAndNoChildItems) {
    reportVariables.lDispVarListEditor(true);
    EXPECT_EQ(editor.pool->headers(), QStringList({"Name", "ID", "Type", "GEM"}));
    const QStringList gem = columnOf(editor.pool, 3);
    EXPECT_EQ(gem.indexOf("N"), gem.count("Y")) << "all GEM variables come first";
    EXPECT_GT(gem.count("N"), 200);
    // Items of the list variable 227.
    const QStringList ids = columnOf(editor.pool, 1);
    EXPECT_TRUE(ids.contains("227"));
    EXPECT_FALSE(ids.contains("231"));
}

TEST_F(ReportVariablesTest, HidingLeavesThePoolAlone) {
    reportVariables.lDispVarListEditor(true);
    const int rows = editor.pool->rowCount();
    reportVariables.lDispVarListEditor(false);
    EXPECT_TRUE(editor.pool->isHidden());
    EXPECT_TRUE(editor.select->isHidden());
    EXPECT_FALSE(editor.selected->isHidden());
    EXPECT_EQ(editor.pool->rowCount(), rows);
}

TEST_F(ReportVariablesTest, GemAndCustomVariablesAreInterleavedByTheTextOfTheirOrder) {
    show("126");
    ASSERT_EQ(editor.selected->rowCount(), 14);
    const QStringList order = columnOf(editor.selected, kOrder);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_LT(order.indexOf("10"), order.indexOf("2"));
    const QStringList gem = columnOf(editor.selected, 3);
    EXPECT_TRUE(gem.contains("Y") && gem.contains("N"));
    EXPECT_FALSE(std::is_sorted(gem.rbegin(), gem.rend())) << "not one table after the other";
}

TEST_F(ReportVariablesTest, AnEditBeginsInTheOrderOfTheNumbers) {
    show("126");
    reportVariables.beginEditing();
    QStringList expected;
    for (int i = 1; i <= 14; ++i) expected << QString::number(i);
    EXPECT_EQ(columnOf(editor.selected, kOrder), expected);
}

TEST_F(ReportVariablesTest, EmptyOrdersComeFirstAndEqualOnesStayAsFilled) {
    editor.selected->setRows(rowsOf({{"C", "3", "", "", "2"},
                                     {"B", "2", "", "", "10"},
                                     {"A", "1", "", "", "2"},
                                     {"Z", "9", "", "", ""}}));
    reportVariables.beginEditing();
    EXPECT_EQ(columnOf(editor.selected, 0), QStringList({"Z", "C", "A", "B"}));
}

TEST_F(ReportVariablesTest, AnEmptyIdLeavesTheListAsItIs) {
    show("126");
    show("   ");
    EXPECT_EQ(editor.selected->rowCount(), 14);
    show("140");
    EXPECT_EQ(editor.selected->rowCount(), 0);
}

TEST_F(ReportVariablesTest, AFailedFillMarksTheListAndIsReportedOnce) {
    show("126");
    state.databasePath += ".gone";
    show("110");
    EXPECT_EQ(failures.size(), 1);
    EXPECT_FALSE(reportVariables.filled());
    EXPECT_EQ(editor.selected->rowCount(), 0) << "the former report's variables are not this one's";
}

TEST_F(ReportVariablesTest, ALinkToAVariableThatIsGoneIsNotShown) {
    show("141");
    EXPECT_FALSE(columnOf(editor.selected, 1).contains("8888"));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ReportVariablesTest, ASaveWritesTheRowOrder) {
    show("126");
    reportVariables.beginEditing();
    const QStringList wanted = columnOf(editor.selected, 1);
    reportVariables.saveLinks("126");
    show("126");
    reportVariables.beginEditing();
    EXPECT_EQ(columnOf(editor.selected, 1), wanted);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ReportVariablesTest, RowsOfOneIdAndOneOrderAreOneLink) {
    editor.selected->setRows(rowsOf({{"Gem", "1", "SV", "Y", "1"},
                                     {"Custom of the same id", "1", "SV", "N", "1"},
                                     {"Gem", "1", "SV", "Y", "2"}}));
    reportVariables.saveLinks("140");
    show("140");
    EXPECT_EQ(columnOf(editor.selected, 1), QStringList({"1", "1"}))
        << "the same variable in two places is two links";
    EXPECT_EQ(columnOf(editor.selected, kOrder), QStringList({"1", "2"}));
}

struct Rights {
    const char* id;
    bool canChange;
};

TEST_F(ReportVariablesTest, ReportsUpToOneHundredAreLocked) {
    const Rights rights[] = {{"", true},      {"  ", true},          {"0", false},     {"1", false},
                             {"100", false},  {"101", true},         {" 100 ", false}, {"-1", true},
                             {"100.5", true}, {"99999999999", true}, {"abc", true}};
    for (const Rights& r : rights) {
        form[txtRptID].setText(r.id);
        reportVariables.lRptSetRightByRecord(false);
        EXPECT_TRUE(form.nav.cmdCancel->isHidden() && form.nav.cmdSave->isHidden()) << r.id;
        EXPECT_TRUE(form.nav.cmdNew->isEnabled()) << r.id;
        EXPECT_EQ(form.nav.cmdUpdate->isEnabled(), r.canChange) << r.id;
        EXPECT_EQ(form.nav.cmdDelete->isEnabled(), r.canChange) << r.id;
        reportVariables.lRptSetRightByRecord(true);
        EXPECT_FALSE(form.nav.cmdCancel->isHidden() || form.nav.cmdSave->isHidden()) << r.id;
        EXPECT_FALSE(form.nav.cmdNew->isEnabled() || form.nav.cmdUpdate->isEnabled() ||
                     form.nav.cmdDelete->isEnabled())
            << r.id;
    }
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ReportVariablesTest, TwentyThousandVariablesFillAndNarrow) {
    useDatabase("gem_large.mdb");
    reportVariables.lDispVarListEditor(true);
    EXPECT_GT(editor.pool->rowCount(), 19000);
    const QString last = editor.pool->text(editor.pool->rowCount() - 1, 0);
    QTest::keyClicks(editor.poolFilter, last);
    EXPECT_LT(editor.pool->model()->rowCount(), 50);
    EXPECT_EQ(editor.pool->selectedRow(), static_cast<int>(columnOf(editor.pool, 0).indexOf(last)));
}

}  // namespace
}  // namespace stelvan::links
