// The window's controls: all there under their names, and fit for keyboard and assistive tools.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QMap>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>

#include "form/frames.h"

namespace stelvan::form {
namespace {

using enum gem::Control;

class MainFormTest : public testing::Test {
protected:
    MainFormTest() : form(buildForm(window)) { window.show(); }
    QMainWindow window;
    MainForm form;
};

const QStringList kNames = {
    "tvwSECSItem",     "DBGridGEM",        "tspData",         "lblPropertyType",
    "txtErrLog",       "lblErrorLog",      "fraDBOperation",  "cmdNew",
    "cmdUpdate",       "cmdSave",          "cmdDelete",       "cmdCancel",
    "cmdPrevious",     "cmdNext",          "lblRecNumber",    "StatusBar1",
    "mnuFile",         "mnuFileDB",        "mnuFileBreak1",   "mnuFileExit",
    "mnuHelp",         "mnuHelpAbout",     "txtVarID",        "txtVarName",
    "txtVarGroup",     "txtVarDesc",       "cmbVarFormat",    "txtVarMin",
    "txtVarMax",       "txtVarUnit",       "txtVarDefValue",  "txtVarValue",
    "txtVarLmtCEID",   "txtVarLmtCEName",  "lvwChildItems",   "lvwItemSelection",
    "lblChildItems",   "lblExistingItems", "cmdSelect",       "cmdDeselect",
    "cmdOrderUp",      "cmdOrderDown",     "txtRptID",        "txtRptName",
    "txtRptDesc",      "chkRptDefault",    "lvwVarList",      "lvwVarPool",
    "lblVarPool",      "cmdVarSelect",     "cmdVarDeselect",  "cmdVarOrderUp",
    "cmdVarOrderDown", "txtEvtID",         "txtEvtName",      "txtEvtGroup",
    "txtEvtDesc",      "chkEvtEnable",     "lvwRptList",      "lvwRptPool",
    "lblRptPool",      "cmdRptSelect",     "cmdRptDeselect",  "cmdRptOrderUp",
    "cmdRptOrderDown", "txtAlmID",         "txtAlmName",      "txtAlmGroup",
    "txtAlmText",      "chkAlmEnable",     "txtAlmSetCEID",   "txtAlmSetCEName",
    "txtAlmClrCEID",   "txtAlmClrCEName",  "txtSttName",      "txtSttValue",
    "txtSttDefValue",  "cmbSttValue",      "chkSttValue",     "cmbSttDefValue",
    "chkSttDefValue",  "cmdSttBrowse",     "cmdSttDefBrowse", "txtLmtID",
    "txtLmtVarID",     "txtLmtUBound",     "txtLmtLBound",    "txtLmtTransType",
    "Frame0",          "Frame1",           "Frame2",          "Frame3",
    "Frame4",          "Frame5",           "Frame6",          "Frame7"};

TEST_F(MainFormTest, EveryControlIsThereOnceUnderItsName) {
    for (const QString& name : kNames)
        EXPECT_EQ(window.findChildren<QObject*>(name).size(), 1) << name.toStdString();
}

TEST_F(MainFormTest, CaptionsAreAsUsersKnowThem) {
    EXPECT_EQ(form.nav.cmdNew->text(), "&Add New");
    EXPECT_EQ(form.nav.cmdUpdate->text(), "&Edit");
    EXPECT_EQ(form.nav.cmdSave->text(), "&Save");
    EXPECT_EQ(form.nav.cmdDelete->text(), "&Delete");
    EXPECT_EQ(form.nav.cmdCancel->text(), "&Cancel");
    EXPECT_EQ(form.nav.cmdPrevious->text(), "&Previous");
    EXPECT_EQ(form.nav.cmdNext->text(), "&Next");
    EXPECT_EQ(form.mnuFileDB->text(), "GEM &Database Setting");
    EXPECT_EQ(form.mnuFileExit->text(), "&Exit");
    EXPECT_EQ(form.mnuHelpAbout->text(), "&About");
    EXPECT_EQ(form.lblErrorLog->text(), "Exception:");
    EXPECT_EQ(form.children.poolLabel->text(), "Existing Variable List:");
    EXPECT_EQ(form.children.selectedLabel->text(), "Child Items:");
    EXPECT_EQ(form.variables.poolLabel->text(), "Existing variables:");
    EXPECT_EQ(form.variables.selectedLabel->text(), "Associated variables:");
    EXPECT_EQ(form.reports.poolLabel->text(), "Existing reports:");
    EXPECT_EQ(form.reports.selectedLabel->text(), "Linked reports:");
    const QStringList frames = {"",
                                "Var Property",
                                "Alarm Property",
                                "Collection Event Property",
                                "Limit Property",
                                "Protocol Settings",
                                "Report Property",
                                ""};
    for (int i = 0; i < kFrames; ++i) EXPECT_EQ(form.frames->frame(i)->title(), frames[i]);
}

TEST_F(MainFormTest, InputsStartClosedAndPoolsHidden) {
    for (const Field* field : form.fields())
        EXPECT_FALSE(field->isOpen()) << field->widget()->objectName().toStdString();
    for (const TwoListEditor* editor : {&form.children, &form.variables, &form.reports}) {
        EXPECT_TRUE(editor->pool->isHidden());
        EXPECT_TRUE(editor->select->isHidden());
        EXPECT_FALSE(editor->selected->isOpen());
    }
    EXPECT_EQ(form.frontFrame(), 0);
}

TEST_F(MainFormTest, EveryInputHasItsLabelAsAccessibleName) {
    for (const Field* field : form.fields()) {
        const QWidget* widget = field->widget();
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        EXPECT_FALSE(widget->accessibleName().contains('&')) << widget->objectName().toStdString();
    }
}

TEST_F(MainFormTest, MnemonicsDoNotCollideInAnyFrame) {
    const auto mnemonicOf = [](const QString& text) {
        const qsizetype at = text.indexOf('&');
        return at < 0 || at + 1 == text.size() ? QString() : text.mid(at + 1, 1).toUpper();
    };
    QStringList everywhere;
    for (const QAction* menu : window.menuBar()->actions()) everywhere << mnemonicOf(menu->text());
    for (const auto* button : form.nav.fraDBOperation->findChildren<QAbstractButton*>())
        everywhere << mnemonicOf(button->text());
    for (const QGroupBox* frame : form.Frame) {
        QStringList used = everywhere;
        for (const auto* label : frame->findChildren<QLabel*>()) used << mnemonicOf(label->text());
        for (const auto* button : frame->findChildren<QAbstractButton*>())
            used << mnemonicOf(button->text());
        used.removeAll(QString());
        const qsizetype all = used.size();
        used.sort();
        used.removeDuplicates();
        EXPECT_EQ(used.size(), all)
            << frame->objectName().toStdString() << used.join("").toStdString();
    }
}

TEST_F(MainFormTest, FramesLieOnOneRectangleAndOneIsInFront) {
    form.showFrame(5);
    form.showFrame(7);
    EXPECT_EQ(form.frontFrame(), 7);
    EXPECT_FALSE(form.Frame[5]->isVisible());
    form.sendFrameToBack(7);
    EXPECT_EQ(form.frontFrame(), 5);
    EXPECT_TRUE(form.Frame[5]->isVisible());
}

TEST_F(MainFormTest, NothingIsCutOffWithALargeFontOrInASmallWindow) {
    QFont large = window.font();
    large.setPointSize(16);
    window.setFont(large);
    for (const int width : {window.minimumSizeHint().width(), 1600}) {
        window.resize(width, 900);
        for (int i = 1; i < 7; ++i) {
            form.showFrame(i);
            QCoreApplication::processEvents();
            for (const auto* label : form.frames->frame(i)->findChildren<QLabel*>()) {
                if (label->isHidden() || label->text().isEmpty()) continue;
                EXPECT_GE(label->width(), label->sizeHint().width())
                    << label->objectName().toStdString();
            }
            const auto* area = form.frames->frame(i)->findChild<QScrollArea*>();
            EXPECT_GE(area->widget()->height(), area->widget()->minimumSizeHint().height());
        }
        for (const auto* button : form.nav.fraDBOperation->findChildren<QAbstractButton*>()) {
            if (button->isHidden()) continue;
            EXPECT_GE(button->width(), button->minimumSizeHint().width());
        }
    }
}

TEST_F(MainFormTest, ThePlaceIsNamedForScreenReaders) {
    form.nav.showPlace(3, 17);
    EXPECT_EQ(form.nav.lblRecNumber->text(), "3 of 17");
    EXPECT_EQ(form.nav.lblRecNumber->accessibleName(), "Record 3 of 17");
}

TEST_F(MainFormTest, EveryWindowHasTheProgramsPicture) {
    EXPECT_FALSE(window.windowIcon().isNull());
    EXPECT_FALSE(QWidget().windowIcon().isNull());
}

TEST_F(MainFormTest, TheFirstSizeLeavesRoomForTheWindowsFrame) {
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    EXPECT_LE(window.width() + 16, screen.width());
    EXPECT_LE(window.height() + 48, screen.height());
}

TEST_F(MainFormTest, TheExceptionBoxGrowsToSixLinesAndGivesTheRoomBack) {
    window.resize(1000, 800);
    QCoreApplication::processEvents();
    const int before = form.txtErrLog->height();
    const int line = form.txtErrLog->fontMetrics().lineSpacing();
    const auto shown = [this](int lines) {
        form.txtErrLog->setPlainText(QString("[Alarm ID]: Must be numeric.\r\n").repeated(lines));
        QTest::qWait(1);
        return form.txtErrLog->verticalScrollBar()->maximum() == 0;
    };
    EXPECT_TRUE(shown(6));
    EXPECT_GE(form.txtErrLog->height(), before + 3 * line);
    EXPECT_FALSE(shown(9));
    EXPECT_LE(form.txtErrLog->height(), 8 * line);
    form.txtErrLog->clear();
    QTest::qWait(1);
    EXPECT_EQ(form.txtErrLog->height(), before);
}

TEST_F(MainFormTest, FieldThatTakesTheFocusIsScrolledIntoSight) {
    QApplication::setActiveWindow(&window);
    form.showFrame(1);
    window.resize(window.minimumSizeHint());
    QCoreApplication::processEvents();
    const auto* area = form.frames->frame(1)->findChild<QScrollArea*>();
    for (const Field* field : {&form[txtVarValue], &form[txtVarName]}) {
        field->widget()->setFocus(Qt::OtherFocusReason);
        const QPoint at = field->widget()->mapTo(area->viewport(), QPoint());
        EXPECT_TRUE(area->viewport()->rect().contains(at))
            << field->widget()->objectName().toStdString();
    }
}

TEST_F(MainFormTest, TabLeadsFromTheTreeToTheViewsThenToTheRecord) {
    QApplication::setActiveWindow(&window);
    form.tvwSECSItem->setFocus();
    QTest::keyClick(form.tvwSECSItem, Qt::Key_Tab);
    EXPECT_TRUE(form.tspData->hasFocus());
}

TEST_F(MainFormTest, ClearingInputsEmptiesAllFieldsAndLists) {
    for (Field* field : form.fields()) field->setText("1");
    form.reports.selected->setHeaders({"Name"});
    form.reports.selected->setRows({{{"x"}}});
    form.clearInputs();
    for (const Field* field : form.fields())
        EXPECT_EQ(field->text(), field->kind() == Field::Kind::Check ? "0" : "");
    EXPECT_EQ(form.reports.selected->rowCount(), 0);
}

}  // namespace
}  // namespace stelvan::form
