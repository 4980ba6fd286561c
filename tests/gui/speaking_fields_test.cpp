// Fields that speak: marks, the way from a message to its field, events to choose from, what a
// setting takes, and that there is something not saved yet.
#include <QLabel>
#include <QStatusBar>
#include <QTabBar>
#include <QTextBlock>

#include "form/pick_list.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

class SpeakingFields : public WindowBench {
protected:
    void SetUp() override { open(); }

    void doubleClickLine(int line) {
        form::ErrorLog& log = *form().txtErrLog;
        const QTextCursor at(log.document()->findBlockByNumber(line));
        const QPoint there = log.cursorRect(at).center() + QPoint(3, 0);
        QTest::mouseDClick(log.viewport(), Qt::LeftButton, {}, there);
    }
    /// The list that has popped up.
    [[nodiscard]] static QWidget* popup() { return QApplication::activePopupWidget(); }
    [[nodiscard]] static form::ListView& choices() {
        return *popup()->findChild<form::ListView*>("lvwPick");
    }
    static void typeToFind(const QString& text) {
        QTest::keyClicks(popup()->findChild<QLineEdit*>("txtPickFind"), text);
    }
    static void pressInList(Qt::Key key) {
        QTest::keyClick(popup()->findChild<QLineEdit*>("txtPickFind"), key);
    }
};

TEST_F(SpeakingFields, AFaultIsMarkedWhenItsFieldIsLeftAndUntilItIsMended) {
    clickCategory(gem::CSTALM);
    edit();
    typeAndLeave("txtAlmName", "Has Blank");
    const QWidget& name = *form()[txtAlmName].widget();
    EXPECT_EQ(name.toolTip(), "Cannot contain space in between.");
    EXPECT_EQ(name.accessibleDescription(), "Cannot contain space in between.");
    EXPECT_EQ(form()[txtAlmGroup].faultShown(), "");
    typeAndLeave("txtAlmName", "HasNone");
    EXPECT_EQ(name.toolTip(), "");
    typeAndLeave("txtAlmName", "");
    EXPECT_EQ(name.toolTip(), "Cannot be empty string.");
    press(form().nav.cmdCancel);
    EXPECT_EQ(name.toolTip(), "");
    edit();
    EXPECT_EQ(name.toolTip(), "");
}

TEST_F(SpeakingFields, ADoubleClickOnALineLeadsToItsField) {
    clickCategory(gem::CSTALM);
    edit();
    typeAndLeave("txtAlmName", "Has Blank");
    typeAndLeave("txtAlmGroup", "");
    typeAndLeave("txtAlmSetCEID", "5");
    ASSERT_EQ(exceptions().count("\r\n"), 3);
    doubleClickLine(1);
    EXPECT_TRUE(form()[txtAlmGroup].widget()->hasFocus());
    doubleClickLine(2);
    EXPECT_TRUE(form()[txtAlmSetCEID].widget()->hasFocus());
    form().tspData->setCurrentIndex(1);
    doubleClickLine(0);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_TRUE(form()[txtAlmName].widget()->hasFocus());
    doubleClickLine(3);
    EXPECT_TRUE(form()[txtAlmName].widget()->hasFocus());
}

TEST_F(SpeakingFields, EnterOnALineLeadsToItsField) {
    clickCategory(gem::CSTALM);
    edit();
    typeAndLeave("txtAlmGroup", "");
    form().txtErrLog->setFocus();
    QTest::keyClick(form().txtErrLog, Qt::Key_Return);
    EXPECT_TRUE(form()[txtAlmGroup].widget()->hasFocus());
}

TEST_F(SpeakingFields, AnEmptyReportMarksItsList) {
    add(gem::CSTRPT);
    typeAndLeave("txtRptName", "NewReport");
    form::ListView& list = *form().variables.selected;
    EXPECT_EQ(list.toolTip(), "Must contain item.");
    const auto line = static_cast<int>(
        exceptions().split("\r\n").indexOf("[Report Variable List]: Must contain item."));
    ASSERT_GE(line, 0);
    doubleClickLine(line);
    EXPECT_TRUE(list.hasFocus());
    press(form().variables.select);
    EXPECT_EQ(list.toolTip(), "");
}

TEST_F(SpeakingFields, APlaceIsReadOutAsItIsShown) {
    clickCategory(gem::CSTALM);
    press(form().nav.cmdNext);
    EXPECT_EQ(form().nav.lblRecNumber->accessibleName(), "Record 2 of 90");
}

TEST_F(SpeakingFields, AnAlarmsEventIsChosenFromTheListOfEvents) {
    clickCategory(gem::CSTALM);
    edit();
    QTest::keyClick(form()[txtAlmSetCEName].widget(), Qt::Key_F4);
    ASSERT_NE(popup(), nullptr);
    const QStringList custom = query("SELECT evt_id FROM secs_cusevent WHERE evt_id > 100");
    EXPECT_GE(choices().rowCount(), custom.size());
    EXPECT_EQ(choices().text(choices().selectedRow(), 0), form()[txtAlmSetCEID].text());
    const QStringList wanted =
        query("SELECT evt_id, evt_name FROM secs_cusevent WHERE evt_id = 110");
    ASSERT_EQ(wanted.size(), 1);
    const QStringList event = wanted.first().split('|');
    typeToFind(event[1]);
    pressInList(Qt::Key_Return);
    EXPECT_EQ(popup(), nullptr);
    EXPECT_EQ(form()[txtAlmSetCEID].text(), event[0]);
    EXPECT_EQ(form()[txtAlmSetCEName].text(), event[1]);
    EXPECT_EQ(exceptions(), "");
    press(form().nav.cmdSave);
    EXPECT_EQ(query("SELECT alm_set_ceid, alm_set_cename FROM secs_alarm WHERE alm_id = 101"),
              wanted);
}

TEST_F(SpeakingFields, AChosenEventIsJudgedAtOnce) {
    clickCategory(gem::CSTALM);
    edit();
    const QString cleared = form()[txtAlmClrCEID].text();
    QTest::keyClick(form()[txtAlmSetCEID].widget(), Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(popup(), nullptr);
    typeToFind(form()[txtAlmClrCEName].text());
    QTest::mouseClick(choices().viewport(), Qt::LeftButton, {},
                      choices().visualRect(choices().model()->index(0, 0)).center());
    EXPECT_EQ(form()[txtAlmSetCEID].text(), cleared);
    EXPECT_EQ(form()[txtAlmSetCEID].marker(), "23");
    EXPECT_TRUE(exceptions().contains("[Alarm Set CEID]"));
}

TEST_F(SpeakingFields, EscapeLeavesTheEventAsItWasAndNoListOpensWhileBrowsing) {
    clickCategory(gem::CSTALM);
    const QString id = form()[txtAlmSetCEID].text();
    QTest::keyClick(form()[txtAlmSetCEID].widget(), Qt::Key_F4);
    EXPECT_EQ(popup(), nullptr);
    edit();
    QTest::keyClick(form()[txtAlmSetCEID].widget(), Qt::Key_F4);
    ASSERT_NE(popup(), nullptr);
    pressInList(Qt::Key_Down);
    pressInList(Qt::Key_Escape);
    EXPECT_EQ(popup(), nullptr);
    EXPECT_EQ(form()[txtAlmSetCEID].text(), id);
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
}

TEST_F(SpeakingFields, TheLimitsEventIsChosenAlike) {
    clickCategory(gem::CSTVSV);
    edit();
    QTest::keyClick(form()[txtVarLmtCEName].widget(), Qt::Key_F4);
    ASSERT_NE(popup(), nullptr);
    pressInList(Qt::Key_Down);
    const int row = choices().selectedRow();
    const QStringList chosen = choices().row(row).texts;
    pressInList(Qt::Key_Enter);
    EXPECT_EQ(form()[txtVarLmtCEID].text(), chosen[0]);
    EXPECT_EQ(form()[txtVarLmtCEName].text(), chosen[1]);
}

TEST_F(SpeakingFields, ASettingSaysWhatItTakesAndMeans) {
    clickCategory(gem::GEMSTT);
    goTo("txtSttName", "T3Timeout");
    EXPECT_EQ(form().lblSttRange->text(), "1 to 120 s");
    EXPECT_TRUE(form().lblSttMeaning->text().startsWith("T3, reply:"));
    EXPECT_TRUE(form()[txtSttValue].widget()->accessibleDescription().startsWith("1 to 120 s. T3"));
    goTo("txtSttName", "T5Timeout");
    EXPECT_EQ(form().lblSttRange->text(), "1 to 240 s");
    edit();
    typeAndLeave("txtSttValue", "999");
    EXPECT_TRUE(form()[txtSttValue].widget()->accessibleDescription().startsWith(
        "Valid range is 1 to 240. 1 to 240 s"));
}

TEST_F(SpeakingFields, TheStatusBarSaysThatSomethingIsNotSaved) {
    const QLabel& panel = *form().lblNotSaved;
    const QString title = window->windowTitle();
    EXPECT_FALSE(panel.isVisible());
    clickCategory(gem::CSTALM);
    EXPECT_FALSE(panel.isVisible());
    edit();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.text(), "Not saved");
    EXPECT_EQ(window->windowTitle(), title);
    EXPECT_GT(panel.mapTo(window.get(), QPoint()).x(), window->width() / 2);
    press(form().nav.cmdCancel);
    EXPECT_FALSE(panel.isVisible());
    press(form().nav.cmdNew);
    EXPECT_TRUE(panel.isVisible());
    press(form().nav.cmdCancel);
    edit();
    press(form().nav.cmdSave);
    EXPECT_FALSE(panel.isVisible());
}

}  // namespace
}  // namespace stelvan::test
