// Ways to records: keys, "Go to ID", back and forward, where a record is used.
#include <QDialog>
#include <QPlainTextEdit>

#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

class RecordWays : public test::AidsBench {
protected:
    void SetUp() override { open(); }
    /// "12 of 70" -> "of 70".
    void typeId(const QString& id) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        key(Qt::Key_G, Qt::ControlModifier);
        auto* const line = window->findChild<QLineEdit*>("txtGoToID");
        ASSERT_NE(line, nullptr);
        line->setText(id);
        QTest::keyClick(line, Qt::Key_Return);
        QTest::qWait(0);
    }
    [[nodiscard]] QString usedIn() const {
        (void)QTest::qWaitFor([this] { return !aids().lblUsedIn->text().isEmpty(); }, 1000);
        return aids().lblUsedIn->text();
    }
};

TEST_F(RecordWays, KeysLeadToTheFirstLastPreviousAndNextRecordFromAnyField) {
    clickCategory(gem::CSTEVT);
    for (const char* name : {"txtEvtName", "txtEvtDesc"}) {
        field(QString(name)).widget()->setFocus();
        key(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(place(), "70 of 70") << name;
        key(Qt::Key_PageUp, Qt::ControlModifier);
        EXPECT_EQ(place(), "69 of 70");
        key(Qt::Key_Home, Qt::ControlModifier);
        EXPECT_EQ(place(), "1 of 70");
        key(Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(place(), "2 of 70");
    }
    EXPECT_EQ(shown("txtEvtID"), query("SELECT evt_id FROM secs_cusevent")[1]);
}

TEST_F(RecordWays, KeysMoveInTheTextWhileEditingAndInTheGrid) {
    clickCategory(gem::CSTEVT);
    goToNumber(5);
    edit();
    field("txtEvtDesc").widget()->setFocus();
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_PageDown, Qt::ControlModifier);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(place(), "5 of 70");
    EXPECT_EQ(window->findChild<QDialog*>("dlgGoToID"), nullptr);
    cancel();
    viewAll();
    form().DBGridGEM->setFocus();
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(form().DBGridGEM->currentIndex().row(), 69);
    EXPECT_EQ(place(), "5 of 70");
}

TEST_F(RecordWays, GoToIdPrefersThePresentCategoryAndSaysWhatIsNotThere) {
    const QString event = query("SELECT evt_id FROM secs_cusevent")[30];
    clickCategory(gem::CSTEVT);
    typeId(event);
    EXPECT_EQ(place(), "31 of 70");
    EXPECT_EQ(shown("txtEvtID"), event);
    const QString alarm = query("SELECT alm_id FROM secs_alarm")[2];
    clickCategory(gem::CSTALM);
    typeId(" " + alarm + " ");
    EXPECT_EQ(shown("txtAlmID"), alarm);
    typeId("123456789");
    auto* const said = window->findChild<QLabel*>("lblGoToID");
    ASSERT_NE(said, nullptr);
    EXPECT_EQ(said->text(), "No record has the ID \"123456789\".");
    EXPECT_EQ(shown("txtAlmID"), alarm);
}

TEST_F(RecordWays, BackAndForwardLeadThroughTheRecordsSeen) {
    EXPECT_FALSE(tool(form::Tool::Back)->isEnabled());
    clickCategory(gem::CSTEVT);
    press(nav().cmdNext);
    press(nav().cmdNext);
    clickCategory(gem::CSTALM);
    ASSERT_EQ(place().left(2), "1 ");
    tool(form::Tool::Back)->trigger();
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(place(), "3 of 70");
    tool(form::Tool::Back)->trigger();
    EXPECT_EQ(place(), "2 of 70");
    tool(form::Tool::Forward)->trigger();
    tool(form::Tool::Forward)->trigger();
    EXPECT_EQ(state().category, gem::CSTALM);
    EXPECT_FALSE(tool(form::Tool::Forward)->isEnabled());
    // From here on another way is gone: what lay ahead is forgotten.
    tool(form::Tool::Back)->trigger();
    press(nav().cmdNext);
    EXPECT_FALSE(tool(form::Tool::Forward)->isEnabled());
    edit();
    EXPECT_FALSE(tool(form::Tool::Back)->isEnabled());
}

TEST_F(RecordWays, BackLeadsFromWhatWasFoundToWhereOneWas) {
    clickCategory(gem::CSTALM);
    press(nav().cmdNext);
    const QString alarm = shown("txtAlmID");
    find(query("SELECT evt_id FROM secs_cusevent")[40]);
    QTest::keyClick(aids().txtFind, Qt::Key_Return);
    ASSERT_EQ(place(), "41 of 70");
    tool(form::Tool::Back)->trigger();
    EXPECT_EQ(state().category, gem::CSTALM);
    EXPECT_EQ(shown("txtAlmID"), alarm);
    tool(form::Tool::Forward)->trigger();
    EXPECT_EQ(place(), "41 of 70");
}

TEST_F(RecordWays, BackPassesBySomethingThatIsGone) {
    clickCategory(gem::CSTEVT);
    press(nav().cmdNext);
    const QString second = shown("txtEvtID");
    press(nav().cmdNext);
    clickCategory(gem::CSTALM);
    ASSERT_TRUE(test::elsewhere(
        state().databasePath,
        "DELETE FROM secs_cusevent WHERE evt_id <> 0 AND evt_id > " + second.toStdString()));
    tool(form::Tool::Back)->trigger();
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(shown("txtEvtID"), second);
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(RecordWays, F6WalksOverTheAreasAndCtrlTabOverTheTabs) {
    clickCategory(gem::CSTEVT);
    form().tvwSECSItem->setFocus();
    const auto focus = [] { return QApplication::focusWidget(); };
    key(Qt::Key_F6);
    EXPECT_TRUE(form().Frame[3]->isAncestorOf(focus()));
    key(Qt::Key_F6);
    EXPECT_TRUE(nav().fraDBOperation->isAncestorOf(focus()));
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), form().txtErrLog);
    key(Qt::Key_F6);
    EXPECT_EQ(focus(), form().tvwSECSItem);
    key(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focus(), form().txtErrLog);
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form().tspData->currentIndex(), 1);
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    edit();
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
}

TEST_F(RecordWays, SaysWhereARecordIsUsedAndLeadsThere) {
    const std::string file = state().databasePath;
    for (const char* statement :
         {"INSERT INTO secs_cusevent (evt_id, evt_name, evt_group, evt_text) VALUES (5000, 'e', "
          "'g', 'd')",
          "INSERT INTO secs_alarm (alm_id, alm_name, alm_group, alm_text, alm_set_ceid) VALUES "
          "(5001, 'a&b', 'g', 'd', 5000)",
          "INSERT INTO secs_alarm (alm_id, alm_name, alm_group, alm_text, alm_set_ceid) VALUES "
          "(5002, 'c', 'g', 'd', 5000)",
          "INSERT INTO secs_alarm (alm_id, alm_name, alm_group, alm_text, alm_clr_ceid) VALUES "
          "(5003, 'd', 'g', 'd', 5000)"})
        ASSERT_TRUE(test::elsewhere(file, statement));
    clickCategory(gem::CSTEVT);
    typeId("5000");
    EXPECT_EQ(usedIn(), "Used: set event of 2 alarms, clear event of 1 alarm");
    QTest::mouseClick(aids().lblUsedIn, Qt::LeftButton);
    auto* const menu = window->findChild<QMenu*>("mnuUsedIn");
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (QAction* action : menu->actions())
        if (!action->isSeparator()) texts << action->text();
    EXPECT_EQ(texts, QStringList({"5001  a&&b", "5002  c", "5003  d"}));
    for (QAction* action : menu->actions())
        if (action->text() == "5002  c") action->trigger();
    menu->close();
    EXPECT_EQ(state().category, gem::CSTALM);
    EXPECT_EQ(shown("txtAlmID"), "5002");
    EXPECT_EQ(aids().lblUsedIn->text(), "");  // nothing can refer to an alarm
}

TEST_F(RecordWays, CountsReportsListsAndChildrenOfAVariable) {
    const std::string file = state().databasePath;
    const QString listed =
        query("SELECT var_parentkey FROM secs_cusvar WHERE var_parentkey <> 0").value(0);
    ASSERT_NE(listed, "");
    const auto children =
        query("SELECT var_id FROM secs_cusvar WHERE var_parentkey = " + listed.toStdString());
    clickCategory(gem::CSTVSV);
    typeId(listed);
    EXPECT_TRUE(usedIn().contains(QString("list of %1 variable").arg(children.size())))
        << usedIn().toStdString();
    typeId(children.first());
    EXPECT_TRUE(usedIn().contains("in 1 list")) << usedIn().toStdString();
    const QString linked = query("SELECT var_id FROM secs_rpt_var").value(0);
    const auto reports = query(
        "SELECT DISTINCT l.rpt_id FROM secs_rpt_var l, secs_report r WHERE "
        "l.rpt_id = r.rpt_id AND l.var_id = " +
        linked.toStdString());
    typeId(linked);
    EXPECT_TRUE(usedIn().contains(QString("in %1 report").arg(reports.size())))
        << usedIn().toStdString();
    if (nav().cmdNew->isEnabled()) {
        press(nav().cmdNew);
        EXPECT_EQ(aids().lblUsedIn->text(), "");
    }
}

}  // namespace
}  // namespace stelvan::app
