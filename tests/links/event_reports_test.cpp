// The reports of an event: pool and list as the file has them, and the link rows as a save writes
// them.
#include "links/event_reports.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "tests/links/link_bench.h"

namespace stelvan::links {
namespace {

class EventReportsTest : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.reports;

    void SetUp() override {
        LinkBench::SetUp();
        useDatabase("gem.mdb");
        openFrame(gem::CSTEVT);
        editor.selected->setHeaders({"Name", "ID"});
    }

    void show(const QString& event) {
        form[txtEvtID].setText(event);
        eventReports.lUpdateEvtRptList(false);
    }
};

TEST_F(EventReportsTest, ThePoolHoldsAllReportsUnderTwoHeaders) {
    eventReports.lDispRptListEditor(true);
    EXPECT_EQ(editor.pool->headers(), QStringList({"Name", "ID"}));
    EXPECT_EQ(editor.pool->rowCount(), 60);
    EXPECT_TRUE(columnOf(editor.pool, 1).contains("126"));
    EXPECT_EQ(editor.pool->selectedRow(), 0);
}

TEST_F(EventReportsTest, ShowAndHideConcernThePoolSideOnly) {
    eventReports.lDispRptListEditor(true);
    eventReports.lDispRptListEditor(false);
    for (const QWidget* hidden :
         std::initializer_list<QWidget*>{editor.orderUp, editor.orderDown, editor.select,
                                         editor.deselect, editor.poolLabel, editor.pool})
        EXPECT_TRUE(hidden->isHidden()) << hidden->objectName().toStdString();
    EXPECT_FALSE(editor.selected->isHidden());
    EXPECT_EQ(editor.pool->rowCount(), 60) << "a hidden pool keeps its rows";
    state.databasePath += ".gone";
    eventReports.lDispRptListEditor(false);
    EXPECT_TRUE(failures.isEmpty()) << "hiding reads nothing";
}

TEST_F(EventReportsTest, AFreshPoolIsNotNarrowed) {
    eventReports.lDispRptListEditor(true);
    QTest::keyClicks(editor.poolFilter, "nothing is called so");
    eventReports.lDispRptListEditor(true);
    EXPECT_EQ(editor.poolFilter->text(), QString());
    EXPECT_EQ(editor.pool->model()->rowCount(), 60);
}

TEST_F(EventReportsTest, TheListStandsInItsStoredOrder) {
    show("162");
    EXPECT_EQ(editor.selected->rowCount(), 12);
    const auto stored = textsOf(editor.selected);
    EXPECT_EQ(stored.front().size(), 2) << "the order number is not shown";
    EXPECT_EQ(editor.selected->selectedRow(), 0);
    EXPECT_TRUE(eventReports.filled());
}

TEST_F(EventReportsTest, ALinkToAReportThatIsGoneIsNotShown) {
    show("164");
    EXPECT_FALSE(columnOf(editor.selected, 1).contains("7777"));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(EventReportsTest, AnEventWithoutLinksShowsAnEmptyList) {
    show("162");
    show("99999");
    EXPECT_EQ(editor.selected->rowCount(), 0);
    EXPECT_EQ(editor.selected->selectedRow(), -1);
    EXPECT_TRUE(eventReports.filled());
}

TEST_F(EventReportsTest, AnIdThatIsEmptyOrNoWholeNumberEmptiesTheListWithoutAMessage) {
    for (const char* id : {"", "abc", "162.0", "1 62"}) {
        show("162");
        ASSERT_EQ(editor.selected->rowCount(), 12);
        show(id);
        EXPECT_EQ(editor.selected->rowCount(), 0) << id;
    }
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(EventReportsTest, TheFlagChangesNothing) {
    form[txtEvtID].setText("162");
    eventReports.lUpdateEvtRptList(true);
    EXPECT_EQ(editor.selected->rowCount(), 12);
}

TEST_F(EventReportsTest, AFailedFillIsReportedOnceAndMarksTheList) {
    const std::string path = state.databasePath;
    state.databasePath += ".gone";
    show("162");
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains("[frmMain.lGetRecordSet.0]")) << failures[0].toStdString();
    EXPECT_EQ(editor.selected->rowCount(), 0);
    EXPECT_FALSE(eventReports.filled());
    state.databasePath = path;
    show("162");
    EXPECT_TRUE(eventReports.filled());
}

TEST_F(EventReportsTest, ASaveReplacesTheLinksByTheRowsInTheirOrder) {
    show("162");
    const QStringList before = columnOf(editor.selected, 1);
    clickRow(editor.selected, 11, 0);
    click(editor.orderUp);
    clickRow(editor.selected, 0, 0);
    click(editor.deselect);
    const QStringList wanted = columnOf(editor.selected, 1);
    ASSERT_NE(wanted, before);
    eventReports.saveLinks("162");
    show("162");
    EXPECT_EQ(columnOf(editor.selected, 1), wanted);
    EXPECT_EQ(editor.selected->rowCount(), 11);
}

TEST_F(EventReportsTest, AnEmptyListRemovesAllLinksOfThisEventOnly) {
    show("101");
    const int others = editor.selected->rowCount();
    ASSERT_GT(others, 0);
    eventReports.clear();
    eventReports.saveLinks("162");
    show("162");
    EXPECT_EQ(editor.selected->rowCount(), 0);
    show("101");
    EXPECT_EQ(editor.selected->rowCount(), others);
}

TEST_F(EventReportsTest, LinksThatCannotBeOpenedAreReportedAndNotSaved) {
    show("162");
    state.databasePath += ".gone";
    errors.handle("cmdSave_Click", [&] { eventReports.saveLinks("162"); });
    EXPECT_EQ(failures.size(), 1);
}

TEST_F(EventReportsTest, ThousandsOfReportsFillAndNarrow) {
    useDatabase("gem_large.mdb");
    eventReports.lDispRptListEditor(true);
    EXPECT_EQ(editor.pool->rowCount(), 3000);
    const QString last = editor.pool->text(2999, 0);
    QTest::keyClicks(editor.poolFilter, last);
    EXPECT_LT(editor.pool->model()->rowCount(), 20);
    click(editor.select);
    EXPECT_EQ(editor.selected->rowCount(), 1);
}

}  // namespace
}  // namespace stelvan::links
