// The way of the focus through the frames, by Tab and Enter, forwards and back.
#include "editing/focus_chain.h"

#include <QComboBox>
#include <QPushButton>
#include <functional>

#include "tests/support/check_bench.h"

namespace stelvan::editing {
namespace {

struct Way {
    const char* control;
    const char* previous;
    const char* next;  // "a/b": a, or b while a is disabled
};

const Way kWays[] = {
    {"txtVarName", "txtVarName", "txtVarID"},
    {"txtVarID", "txtVarName", "txtVarGroup"},
    {"txtVarGroup", "txtVarID", "txtVarDesc"},
    {"txtVarDesc", "txtVarGroup", "cmbVarFormat/txtVarMin"},
    {"cmbVarFormat", "txtVarDesc", "txtVarMin"},
    {"txtVarMin", "cmbVarFormat/txtVarDesc", "txtVarMax"},
    {"txtVarMax", "txtVarMin", "txtVarUnit"},
    {"txtVarUnit", "txtVarMax", "txtVarDefValue"},
    {"txtVarDefValue", "txtVarUnit", "txtVarValue"},
    {"txtVarValue", "txtVarDefValue", "lvwItemSelection"},
    {"lvwItemSelection", "txtVarDefValue", "cmdSelect"},
    {"cmdSelect", "lvwItemSelection", "cmdDeselect"},
    {"cmdDeselect", "cmdSelect", "cmdOrderUp"},
    {"cmdOrderUp", "cmdDeselect", "cmdOrderDown"},
    {"cmdOrderDown", "cmdOrderUp", "lvwItemSelection"},
    {"lvwChildItems", "cmdOrderDown", "cmdSave"},
    {"txtAlmName", "txtAlmID", "txtAlmID"},
    {"txtAlmID", "txtAlmName", "txtAlmGroup"},
    {"txtAlmGroup", "txtAlmID", "txtAlmText"},
    {"txtAlmText", "txtAlmGroup", "chkAlmEnable"},
    {"chkAlmEnable", "txtAlmText", "txtAlmSetCEName"},
    {"txtAlmSetCEName", "chkAlmEnable", "txtAlmSetCEID"},
    {"txtAlmSetCEID", "txtAlmSetCEName", "txtAlmClrCEName"},
    {"txtAlmClrCEName", "txtAlmSetCEID", "txtAlmClrCEID"},
    {"txtAlmClrCEID", "txtAlmClrCEName", "cmdSave"},
    {"txtEvtName", "txtEvtID", "txtEvtID"},
    {"txtEvtID", "txtEvtName", "txtEvtGroup"},
    {"txtEvtGroup", "txtEvtID", "txtEvtDesc"},
    {"txtEvtDesc", "txtEvtGroup", "chkEvtEnable"},
    {"chkEvtEnable", "txtEvtDesc", "lvwRptPool"},
    {"cmdRptSelect", "lvwRptPool", "cmdRptDeselect"},
    {"cmdRptDeselect", "cmdRptSelect", "cmdRptOrderUp"},
    {"cmdRptOrderUp", "cmdRptDeselect", "cmdRptOrderDown"},
    {"cmdRptOrderDown", "cmdRptOrderUp", "lvwRptList"},
    {"lvwRptPool", "cmdRptOrderDown", "cmdSave"},
    {"txtRptName", "txtRptName", "txtRptID"},
    {"txtRptID", "txtRptName", "txtRptDesc"},
    {"txtRptDesc", "txtRptID", "chkRptDefault"},
    {"chkRptDefault", "txtRptDesc", "lvwVarPool"},
    {"lvwVarPool", "chkRptDefault", "cmdVarSelect"},
    {"cmdVarSelect", "lvwVarPool", "cmdVarDeselect"},
    {"cmdVarDeselect", "cmdVarSelect", "cmdVarOrderUp"},
    {"cmdVarOrderUp", "cmdVarDeselect", "cmdVarOrderDown"},
    {"cmdVarOrderDown", "cmdVarOrderUp", "lvwVarList"},
    {"lvwVarList", "cmdVarOrderDown", "cmdSave"},
    {"txtSttValue", "txtSttValue", "txtSttDefValue"},
    {"txtSttDefValue", "txtSttValue", "cmdSave"},
    {"cmbSttValue", "cmbSttValue", "cmbSttDefValue"},
    {"cmbSttDefValue", "cmbSttValue", "cmdSave"},
};

class Focus : public test::CheckBench {
protected:
    FocusChain chain{window, main};

    void SetUp() override {
        CheckBench::SetUp();
        chain.install();
        for (form::Field* f : form.fields()) {
            f->setEnabled(true);
            f->setLocked(false);
            f->setVisible(true);
        }
        for (const form::TwoListEditor* e : {&form.reports, &form.variables, &form.children}) {
            e->showPool(true);
            e->showSelected(true);
        }
        form.nav.cmdSave->setVisible(true);
    }
    void TearDown() override {
        EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
    }

    QWidget* named(const QString& name) { return window.findChild<QWidget*>(name); }
    void front(const QString& control) {
        for (int frame = 1; frame <= 6; ++frame)
            if (form.frames->frame(frame)->isAncestorOf(named(control))) form.showFrame(frame);
        QApplication::processEvents();
    }
    static QString focused() {
        return QApplication::focusWidget() == nullptr ? ""
                                                      : QApplication::focusWidget()->objectName();
    }
    QString press(const QString& control, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        front(control);
        named(control)->setFocus();
        EXPECT_EQ(focused(), control);
        QTest::keyClick(named(control), key, modifiers);
        return focused();
    }
    static QString first(const QString& way) { return way.section('/', 0, 0); }
};

TEST_F(Focus, TheTableIsAsItWasMeantToBe) {
    ASSERT_EQ(gem::focusOrder().size(), std::size(kWays));
}

TEST_F(Focus, TabAndEnterGoOnFromEveryControl) {
    for (const Way& way : kWays)
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Enter})
            EXPECT_EQ(press(way.control, key), first(way.next)) << way.control << " " << key;
}

TEST_F(Focus, WithShiftTheyGoBack) {
    for (const Way& way : kWays) {
        EXPECT_EQ(press(way.control, Qt::Key_Backtab, Qt::ShiftModifier), first(way.previous))
            << way.control;
        EXPECT_EQ(press(way.control, Qt::Key_Return, Qt::ShiftModifier), first(way.previous))
            << way.control;
    }
}

TEST_F(Focus, WalksThroughEachFrame) {
    const QStringList walks[] = {
        {"txtVarName", "txtVarID", "txtVarGroup", "txtVarDesc", "cmbVarFormat", "txtVarMin",
         "txtVarMax", "txtVarUnit", "txtVarDefValue", "txtVarValue", "lvwItemSelection",
         "cmdSelect", "cmdDeselect", "cmdOrderUp", "cmdOrderDown", "lvwItemSelection"},
        {"txtAlmName", "txtAlmID", "txtAlmGroup", "txtAlmText", "chkAlmEnable", "txtAlmSetCEName",
         "txtAlmSetCEID", "txtAlmClrCEName", "txtAlmClrCEID", "cmdSave"},
        {"txtEvtName", "txtEvtID", "txtEvtGroup", "txtEvtDesc", "chkEvtEnable", "lvwRptPool",
         "cmdSave"},
        {"txtRptName", "txtRptID", "txtRptDesc", "chkRptDefault", "lvwVarPool", "cmdVarSelect",
         "cmdVarDeselect", "cmdVarOrderUp", "cmdVarOrderDown", "lvwVarList", "cmdSave"},
        {"txtSttValue", "txtSttDefValue", "cmdSave"},
        {"cmbSttValue", "cmbSttDefValue", "cmdSave"},
    };
    for (const QStringList& walk : walks) {
        front(walk[0]);
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return}) {
            named(walk[0])->setFocus();
            for (qsizetype i = 1; i < walk.size(); ++i) {
                QTest::keyClick(QApplication::focusWidget(), key);
                ASSERT_EQ(focused(), walk[i]);
            }
        }
    }
}

TEST_F(Focus, ADisabledFormatBoxIsPassedByInBothDirections) {
    form[cmbVarFormat].setEnabled(false);
    EXPECT_EQ(press("txtVarDesc", Qt::Key_Tab), "txtVarMin");
    EXPECT_EQ(press("txtVarMin", Qt::Key_Return, Qt::ShiftModifier), "txtVarDesc");
    EXPECT_EQ(press("txtVarMin", Qt::Key_Backtab, Qt::ShiftModifier), "txtVarDesc");
}

TEST_F(Focus, WithoutATargetTabIsTheToolkitsSoThatNoFieldHoldsTheKeyboard) {
    form.children.showPool(false);
    EXPECT_NE(press("txtVarValue", Qt::Key_Tab), "txtVarValue");
    form[txtAlmID].setEnabled(false);
    EXPECT_NE(press("txtAlmName", Qt::Key_Tab), "txtAlmName");
    EXPECT_NE(press("txtAlmName", Qt::Key_Backtab, Qt::ShiftModifier), "txtAlmName");
    form.nav.cmdSave->setVisible(false);
    EXPECT_NE(press("txtAlmClrCEID", Qt::Key_Tab), "txtAlmClrCEID");
    EXPECT_NE(press("txtAlmText", Qt::Key_Tab), "txtAlmText");
}

TEST_F(Focus, WithoutATargetEnterStaysWhereItIs) {
    form.children.showPool(false);
    EXPECT_EQ(press("txtVarValue", Qt::Key_Return), "txtVarValue");
    form[txtAlmID].setEnabled(false);
    EXPECT_EQ(press("txtAlmName", Qt::Key_Enter), "txtAlmName");
}

TEST_F(Focus, OtherKeysAndOtherModifiersMoveNothing) {
    EXPECT_EQ(press("txtVarName", Qt::Key_Tab, Qt::ControlModifier), "txtVarName");
    EXPECT_EQ(press("txtVarName", Qt::Key_Return, Qt::ControlModifier), "txtVarName");
    EXPECT_EQ(press("txtVarName", Qt::Key_Return, Qt::AltModifier), "txtVarName");
    EXPECT_EQ(press("txtVarName", Qt::Key_A), "txtVarName");
    EXPECT_EQ(press("txtVarName", Qt::Key_Right), "txtVarName");
    EXPECT_EQ(form[txtVarName].text(), "a");
}

TEST_F(Focus, TheProcedureItselfKnowsTwoKeysAndTwoShiftStates) {
    QWidget* const previous = named("txtVarName");
    QWidget* const next = named("txtVarGroup");
    front("txtVarID");
    const auto after = [&](int key, int shift, QWidget* before, QWidget* behind) {
        named("txtVarID")->setFocus();
        chain.lSetFocus(key, shift, before, behind);
        return focused();
    };
    EXPECT_EQ(after(9, 0, previous, next), "txtVarGroup");
    EXPECT_EQ(after(13, 0, previous, next), "txtVarGroup");
    EXPECT_EQ(after(9, 1, previous, next), "txtVarName");
    EXPECT_EQ(after(13, 3, previous, next), "txtVarName") << "the Shift bit decides";
    EXPECT_EQ(after(9, 2, previous, next), "txtVarID");
    EXPECT_EQ(after(13, 4, previous, next), "txtVarID");
    EXPECT_EQ(after(10, 0, previous, next), "txtVarID");
    EXPECT_EQ(after(9, 0, previous, nullptr), "txtVarID");
}

TEST_F(Focus, CtrlEnterTypesALineBreakInABoxOfSeveralLines) {
    form[txtAlmText].setText("one");
    EXPECT_EQ(press("txtAlmText", Qt::Key_Return, Qt::ControlModifier), "txtAlmText");
    EXPECT_EQ(form[txtAlmText].text().count("\r\n"), 1);
    EXPECT_EQ(press("txtAlmText", Qt::Key_Return), "chkAlmEnable");
    EXPECT_EQ(form[txtAlmText].text().count("\r\n"), 1);
}

TEST_F(Focus, EnterOnAButtonMovesOnAndDoesNotPressIt) {
    int pressed = 0;
    QObject::connect(form.variables.select, &QPushButton::clicked, &chain, [&] { ++pressed; });
    EXPECT_EQ(press("cmdVarSelect", Qt::Key_Return), "cmdVarDeselect");
    EXPECT_EQ(pressed, 0);
    named("cmdVarSelect")->setFocus();
    QTest::keyClick(named("cmdVarSelect"), Qt::Key_Space);
    EXPECT_EQ(pressed, 1);
}

TEST_F(Focus, AnOpenDropDownHasItsKeysToItself) {
    front("cmbVarFormat");
    form[cmbVarFormat].setEntries({"A", "B", "U1"});
    auto* combo = qobject_cast<QComboBox*>(named("cmbVarFormat"));
    combo->setFocus();
    combo->showPopup();
    QTest::keyClick(combo->view(), Qt::Key_End);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    EXPECT_EQ(form[cmbVarFormat].text(), "U1");
    EXPECT_EQ(focused(), "cmbVarFormat");
}

TEST_F(Focus, TheListOfReportsHasNoHandlerAndKeepsTheToolkitsOrder) {
    EXPECT_NE(press("lvwRptList", Qt::Key_Tab), "lvwRptList");
}

TEST_F(Focus, FailuresOfTheChildListAreReportedUnderACopiedName) {
    for (const gem::FocusStep& step : gem::focusOrder())
        EXPECT_EQ(step.reportedAs, step.control == lvwChildItems ? "cmdOrderDown_KeyDown" : "")
            << gem::nameOf(step.control);
}

}  // namespace
}  // namespace stelvan::editing
