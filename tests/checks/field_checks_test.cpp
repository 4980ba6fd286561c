#include "checks/field_checks.h"

#include <QPushButton>

#include "tests/support/check_bench.h"

namespace stelvan::checks {
namespace {

using form::EditMode;

/// What typing `text` into `field` and leaving it leads to: the marker, and the one line of the
/// box.
struct Typed {
    const char* field;
    const char* text;
    const char* marker;
    const char* line;  // empty when valid
};

class FieldChecksTest : public test::CheckBench {
protected:
    void judge(std::int16_t category, EditMode mode, std::initializer_list<Typed> rows) {
        for (const Typed& row : rows) {
            begin(category, mode);
            form::Field& typed = field(row.field);
            typeAndLeave(typed, row.text);
            EXPECT_EQ(typed.marker(), row.marker) << row.field << " \"" << row.text << '"';
            EXPECT_EQ(box.text(), *row.line == '\0' ? QString() : row.line + QString("\r\n"))
                << row.field << " \"" << row.text << '"';
            EXPECT_EQ(failures, QStringList()) << row.field << " \"" << row.text << '"';
            typed.setText("");
        }
    }
};

TEST_F(FieldChecksTest, alarmFields) {
    useDatabase("gem.mdb");
    judge(
        gem::CSTALM, EditMode::Adding,
        {
            {"txtAlmID", "", "1", "[Alarm ID]: Cannot be empty string."},
            {"txtAlmID", "1 5", "2", "[Alarm ID]: Cannot contain space in between."},
            {"txtAlmID", "abc", "3", "[Alarm ID]: Must be numeric."},
            {"txtAlmID", "5.0", "4", "[Alarm ID]: Must be an integer."},
            {"txtAlmID", "0", "21", "[Alarm ID]: Valid range is 1 to 2147483647. "},
            {"txtAlmID", "-1", "21", "[Alarm ID]: Valid range is 1 to 2147483647. "},
            {"txtAlmID", "101", "5", "[Alarm ID]: ID already exists. Please use other number."},
            {"txtAlmID", " 7777 ", "0", ""},
            {"txtAlmName", "  ", "1", "[Alarm Name]: Cannot be empty string."},
            {"txtAlmName", "Lot Start", "2", "[Alarm Name]: Cannot contain space in between."},
            {"txtAlmName", "sc1temperaturehigh", "6",
             "[Alarm Name]: Name already exists. Please use other name. "},
            {"txtAlmName", " NewAlarm ", "0", ""},
            {"txtAlmGroup", "", "1", "[Alarm Group]: Cannot be empty string."},
            {"txtAlmGroup", "a b", "2", "[Alarm Group]: Cannot contain space in between."},
            {"txtAlmGroup", "Group", "0", ""},
            {"txtAlmText", " ", "1", "[Alarm Text]: Cannot be empty string."},
            {"txtAlmText", "two words", "0", ""},
            {"txtAlmSetCEID", "1 0", "2", "[Alarm Set CEID]: Cannot contain space in between."},
            {"txtAlmSetCEID", "x", "3", "[Alarm Set CEID]: Must be numeric."},
            {"txtAlmSetCEID", "101.0", "4", "[Alarm Set CEID]: Must be an integer."},
            {"txtAlmSetCEID", "100", "26", "[Alarm Set CEID]: Valid range is 101 to 2147483647. "},
            {"txtAlmSetCEID", "9999", "0", ""},
            {"txtAlmSetCEID", "", "0", ""},
            {"txtAlmClrCEID", "1 0", "2", "[Alarm Clear CEID]: Cannot contain space in between."},
            {"txtAlmClrCEID", "x", "3", "[Alarm Clear CEID]: Must be numeric."},
            {"txtAlmClrCEID", "101.0", "4", "[Alarm Clear CEID]: Must be an integer."},
            {"txtAlmClrCEID", "100", "26",
             "[Alarm Clear CEID]: Valid range is 101 to 2147483647. "},
            {"txtAlmClrCEID", "9999", "0", ""},
            {"txtAlmSetCEName", "a b", "2", "[Alarm Set CEName]: Cannot contain space in between."},
            {"txtAlmSetCEName", "NoSuchEvent", "0", ""},
            {"txtAlmClrCEName", "a b", "2",
             "[Alarm Clear CEName]: Cannot contain space in between."},
            {"txtAlmClrCEName", "NoSuchEvent", "0", ""},
        });
}

TEST_F(FieldChecksTest, eventFields) {
    useDatabase("gem.mdb");
    judge(gem::CSTEVT, EditMode::Adding,
          {
              {"txtEvtID", "", "1", "[Event ID]: Cannot be empty string."},
              {"txtEvtID", "1 5", "2", "[Event ID]: Cannot contain space in between."},
              {"txtEvtID", "abc", "3", "[Event ID]: Must be numeric."},
              {"txtEvtID", "500.0", "4", "[Event ID]: Must be an integer."},
              {"txtEvtID", "100", "26", "[Event ID]: Valid range is 101 to 2147483647. "},
              {"txtEvtID", "101", "5", "[Event ID]: ID already exists. Please use other number."},
              {"txtEvtID", "7777", "0", ""},
              {"txtEvtName", "", "1", "[Event Name]: Cannot be empty string."},
              {"txtEvtName", "Lot Start", "2", "[Event Name]: Cannot contain space in between."},
              {"txtEvtName", "EquipmentOffline", "6",
               "[Event Name]: Name already exists. Please use other name. "},
              {"txtEvtName", "Sc1AlarmSet", "6",
               "[Event Name]: Name already exists. Please use other name. "},
              {"txtEvtName", "NewEvent", "0", ""},
              {"txtEvtGroup", "", "1", "[Event Group]: Cannot be empty string."},
              {"txtEvtGroup", "a b", "2", "[Event Group]: Cannot contain space in between."},
              {"txtEvtDesc", "", "1", "[Event Desc]: Cannot be empty string."},
              {"txtEvtDesc", "two words", "0", ""},
          });
}

TEST_F(FieldChecksTest, reportFields) {
    useDatabase("gem.mdb");
    form.variables.selected->appendRow({{"Clock", "1", "SV", "Y", ""}, false});
    judge(gem::CSTRPT, EditMode::Adding,
          {
              {"txtRptID", "", "1", "[Report ID]: Cannot be empty string."},
              {"txtRptID", "1 5", "2", "[Report ID]: Cannot contain space in between."},
              {"txtRptID", "abc", "3", "[Report ID]: Must be numeric."},
              {"txtRptID", "500.0", "4", "[Report ID]: Must be an integer."},
              {"txtRptID", "100", "31", "[Report ID]: Valid range is 101 to 2147483647. "},
              {"txtRptID", "101", "5", "[Report ID]: ID already exists. Please use other number."},
              {"txtRptID", "7777", "0", ""},
              {"txtRptName", "", "1", "[Report Name]: Cannot be empty string."},
              {"txtRptName", "a b", "2", "[Report Name]: Cannot contain space in between."},
              {"txtRptName", "Sc1Status", "6",
               "[Report Name]: Name already exists. Please use other name. "},
              {"txtRptName", "NewReport", "0", ""},
              {"txtRptDesc", "", "1", "[Report Desc]: Cannot be empty string."},
              {"txtRptDesc", "two words", "0", ""},
          });
}

TEST_F(FieldChecksTest, variableFields) {
    useDatabase("gem.mdb");
    judge(
        gem::CSTVSV, EditMode::Adding,
        {
            {"txtVarID", "", "1", "[Variable ID]: Cannot be empty string."},
            {"txtVarID", "1 5", "2", "[Variable ID]: Cannot contain space in between."},
            {"txtVarID", "abc", "3", "[Variable ID]: Must be numeric."},
            {"txtVarID", "500.0", "4", "[Variable ID]: Must be an integer."},
            {"txtVarID", "100", "36", "[Variable ID]: Valid range is 101 to 2147483647. "},
            {"txtVarID", "218", "5", "[Variable ID]: ID already exists. Please use other number."},
            {"txtVarID", "77777", "0", ""},
            {"txtVarName", "", "1", "[Variable Name]: Cannot be empty string."},
            {"txtVarName", "a b", "2", "[Variable Name]: Cannot contain space in between."},
            {"txtVarName", "Clock", "6",
             "[Variable Name]: Name already exists. Please use other name. "},
            {"txtVarName", "robotstate", "6",
             "[Variable Name]: Name already exists. Please use other name. "},
            {"txtVarName", "NewVariable", "0", ""},
            {"txtVarGroup", "", "1", "[Variable Group]: Cannot be empty string."},
            {"txtVarGroup", "a b", "2", "[Variable Group]: Cannot contain space in between."},
            {"txtVarDesc", "", "1", "[Variable Desc]: Cannot be empty string."},
            {"txtVarDesc", "two words", "0", ""},
            {"txtVarUnit", "", "0", ""},
            {"txtVarUnit", "m / s", "0", ""},
        });
}

TEST_F(FieldChecksTest, anIdIsSearchedOnlyWhileAdding) {
    useDatabase("gem.mdb");
    judge(gem::CSTVSV, EditMode::Editing, {{"txtVarID", "218", "0", ""}});
    judge(gem::CSTALM, EditMode::Editing, {{"txtAlmID", "101", "0", ""}});
}

TEST_F(FieldChecksTest, aRecordKeepsItsOwnNameWhateverItsLetterCaseAndOuterBlanks) {
    useDatabase("gem.mdb");
    state.loadedName = "RobotState";
    judge(gem::CSTVSV, EditMode::Editing,
          {{"txtVarName", "RobotState", "0", ""},
           {"txtVarName", "  ROBOTSTATE ", "0", ""},
           {"txtVarName", "RobotTheta", "6",
            "[Variable Name]: Name already exists. Please use other name. "}});
    judge(gem::CSTVSV, EditMode::Adding,
          {{"txtVarName", "RobotState", "6",
            "[Variable Name]: Name already exists. Please use other name. "}});
}

TEST_F(FieldChecksTest, aStoredNameWithAQuoteStaysEditable) {
    useDatabase("gem.mdb");
    state.loadedName = "Pump'sHours";
    judge(gem::CSTVSV, EditMode::Editing, {{"txtVarName", "Pump'sHours", "0", ""}});
}

TEST_F(FieldChecksTest, aNewNameWithAQuoteFailsOnceAndKeepsItsMarker) {
    useDatabase("gem.mdb");
    begin(gem::CSTVSV, EditMode::Adding);
    typeAndLeave(form[txtVarName], "a b");
    const QString listed = box.text();
    typeAndLeave(form[txtVarName], "O'Brien");
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains("[frmMain.lGetRecordSet.0]") ||
                failures[0].contains("[frmMain.lCheckDuplicate.0]"))
        << failures[0].toStdString();
    EXPECT_EQ(form[txtVarName].marker(), "2");
    EXPECT_EQ(box.text(), listed);
}

TEST_F(FieldChecksTest, idsBeyond32BitsOverflowUnderTheHandlersName) {
    const std::pair<std::int16_t, const char*> rows[] = {{gem::CSTALM, "txtAlmID"},
                                                         {gem::CSTEVT, "txtEvtID"},
                                                         {gem::CSTRPT, "txtRptID"},
                                                         {gem::CSTVDV, "txtVarID"},
                                                         {gem::CSTALM, "txtAlmSetCEID"}};
    for (const auto& [category, name] : rows) {
        begin(category, EditMode::Adding);
        failures.clear();
        typeAndLeave(field(name), "2147483648");
        EXPECT_EQ(failures,
                  QStringList(QString("ERROR(6) [frmMain.%1_LostFocus.0]: Overflow").arg(name)));
        EXPECT_EQ(field(name).marker(), "0");
    }
}

TEST_F(FieldChecksTest, twoHandlersReportUnderTheirOldNames) {
    begin(gem::CSTALM, EditMode::Adding);
    typeAndLeave(form[txtAlmClrCEID], "2147483648");
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.txtAlmClrCEID_lostfocus.0]: Overflow"));
}

TEST_F(FieldChecksTest, nothingIsCheckedWhileBrowsing) {
    begin(gem::CSTALM, EditMode::Browsing);
    typeAndLeave(form[txtAlmGroup], "a b");
    EXPECT_EQ(form[txtAlmGroup].marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(FieldChecksTest, nothingIsCheckedOnceTheEditIsOver) {
    begin(gem::CSTALM, EditMode::Editing);
    state.checksEnabled = false;
    typeAndLeave(form[txtAlmGroup], "a b");
    EXPECT_EQ(form[txtAlmGroup].marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(FieldChecksTest, aClosedFieldIsValid) {
    begin(gem::CSTALM, EditMode::Editing);
    form[txtAlmID].setText("0");
    form[txtAlmID].setLocked(true);
    leave(form[txtAlmID]);
    EXPECT_EQ(form[txtAlmID].marker(), "0");
}

TEST_F(FieldChecksTest, theBoxListsTheWholeRecordInTableOrder) {
    begin(gem::CSTALM, EditMode::Adding);
    typeAndLeave(form[txtAlmText], "");
    typeAndLeave(form[txtAlmID], "0");
    EXPECT_EQ(box.text(), line("Alarm ID", "Valid range is 1 to 2147483647. ") +
                              line("Alarm Text", "Cannot be empty string."));
}

TEST_F(FieldChecksTest, equalCeidsMarkBothSidesAndAreClearedTogether) {
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmSetCEName].setText("A");
    form[txtAlmClrCEName].setText("B");
    typeAndLeave(form[txtAlmSetCEID], "555");
    typeAndLeave(form[txtAlmClrCEID], " 555 ");
    EXPECT_EQ(
        box.text(),
        line("Alarm Set CEID", "Alarm Set CEID and Alarm Clear CEID cannot be the same. ") +
            line("Alarm Clear CEID", "Alarm Set CEID and Alarm Clear CEID cannot be the same. "));
    typeAndLeave(form[txtAlmSetCEID], "556");
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(form[txtAlmClrCEID].marker(), "0");
}

TEST_F(FieldChecksTest, equalCeNamesMarkBothSidesAndAreClearedTogether) {
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmSetCEID].setText("555");
    form[txtAlmClrCEID].setText("556");
    typeAndLeave(form[txtAlmClrCEName], "Same");
    typeAndLeave(form[txtAlmSetCEName], "Same ");
    EXPECT_EQ(box.text(), line("Alarm Set CEName",
                               "Alarm Set CEName and Alarm Clear CEName cannot be the same. ") +
                              line("Alarm Clear CEName",
                                   "Alarm Set CEName and Alarm Clear CEName cannot be the same. "));
    typeAndLeave(form[txtAlmClrCEName], "same");
    EXPECT_EQ(box.text(), "");
}

TEST_F(FieldChecksTest, anEmptiedCeidKeepsItsMarkerUntilTheSave) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmName].setText("New");
    form[txtAlmID].setText("7777");
    form[txtAlmGroup].setText("G");
    form[txtAlmText].setText("T");
    typeAndLeave(form[txtAlmSetCEID], "x");
    typeAndLeave(form[txtAlmSetCEID], "");
    EXPECT_EQ(form[txtAlmSetCEID].marker(), "3");
    EXPECT_EQ(box.text(), line("Alarm Set CEID", "Must be numeric."));
    EXPECT_TRUE(checks.checkForSave(gem::CSTALM));
    EXPECT_EQ(form[txtAlmSetCEID].marker(), "0");
}

TEST_F(FieldChecksTest, ceidAndCeNameFillEachOtherIn) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    typeAndLeave(form[txtAlmSetCEID], "101");
    EXPECT_EQ(form[txtAlmSetCEName].text(), "Sc1AlarmSet");
    typeAndLeave(form[txtAlmClrCEName], "sc1alarmcleared");
    EXPECT_EQ(form[txtAlmClrCEID].text(), "102");
    EXPECT_EQ(form[txtAlmClrCEName].text(), "sc1alarmcleared");
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(failures, QStringList());
}

TEST_F(FieldChecksTest, whatWasFilledInIsChecked) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmClrCEName].setText("Sc1AlarmSet");
    typeAndLeave(form[txtAlmSetCEID], "101");
    EXPECT_EQ(form[txtAlmSetCEName].marker(), "22");
    EXPECT_EQ(form[txtAlmClrCEName].marker(), "22");
}

TEST_F(FieldChecksTest, nothingTypedIsOverwrittenAndUnknownEventsFillNothing) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmSetCEName].setText("Mine");
    typeAndLeave(form[txtAlmSetCEID], "101");
    EXPECT_EQ(form[txtAlmSetCEName].text(), "Mine");
    typeAndLeave(form[txtAlmClrCEID], "9999");
    EXPECT_EQ(form[txtAlmClrCEName].text(), "");
    form[txtAlmClrCEID].setText("");
    typeAndLeave(form[txtAlmClrCEName], "EquipmentOffline");  // an event below 101
    EXPECT_EQ(form[txtAlmClrCEID].text(), "");
    typeAndLeave(form[txtAlmClrCEName], "O'Brien");
    EXPECT_EQ(failures, QStringList());
}

TEST_F(FieldChecksTest, leavingAnUnchangedCeidFillsNothing) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Editing);
    form[txtAlmSetCEID].setText("101");
    leave(form[txtAlmSetCEID]);
    EXPECT_EQ(form[txtAlmSetCEName].text(), "");
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(FieldChecksTest, theSaveFillsNothingIn) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    type(form[txtAlmSetCEID], "101");
    static_cast<void>(checks.checkForSave(gem::CSTALM));
    EXPECT_EQ(form[txtAlmSetCEName].text(), "");
}

TEST_F(FieldChecksTest, theSaveRunsAllChecksAfterAFailureAndIsRefused) {
    useDatabase("gem.mdb");
    begin(gem::CSTALM, EditMode::Adding);
    form[txtAlmName].setText("New");
    form[txtAlmID].setText("2147483648");
    form[txtAlmGroup].setText("G");
    form[txtAlmText].setText("");
    EXPECT_FALSE(checks.checkForSave(gem::CSTALM));
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.txtAlmID_LostFocus.0]: Overflow"));
    EXPECT_EQ(box.text(), line("Alarm Text", "Cannot be empty string."));
    form[txtAlmText].setText("T");
    EXPECT_FALSE(checks.checkForSave(gem::CSTALM));
    EXPECT_EQ(box.text(), "");  // no field is at fault, yet what could not be judged is not saved
    form[txtAlmID].setText("7777");
    EXPECT_TRUE(checks.checkForSave(gem::CSTALM));
}

TEST_F(FieldChecksTest, everyCategorysChecksRunForTheSave) {
    useDatabase("gem.mdb");
    const QString empty = "Cannot be empty string.";
    begin(gem::CSTVDV, EditMode::Adding);
    EXPECT_FALSE(checks.checkForSave(gem::CSTVDV));
    EXPECT_EQ(box.text(), line("Variable Name", empty) + line("Variable ID", empty) +
                              line("Variable Group", empty) + line("Variable Desc", empty) +
                              line("Variable Format", empty));
    begin(gem::CSTALM, EditMode::Adding);
    EXPECT_FALSE(checks.checkForSave(gem::CSTALM));
    EXPECT_EQ(box.text(), line("Alarm Name", empty) + line("Alarm ID", empty) +
                              line("Alarm Group", empty) + line("Alarm Text", empty));
    begin(gem::CSTEVT, EditMode::Adding);
    EXPECT_FALSE(checks.checkForSave(gem::CSTEVT));
    EXPECT_EQ(box.text(), line("Event Name", empty) + line("Event ID", empty) +
                              line("Event Group", empty) + line("Event Desc", empty));
    begin(gem::CSTRPT, EditMode::Adding);
    EXPECT_FALSE(checks.checkForSave(gem::CSTRPT));
    EXPECT_EQ(box.text(), line("Report Name", empty) + line("Report ID", empty) +
                              line("Report Desc", empty) +
                              line("Report Variable List", "Must contain item."));
    EXPECT_TRUE(checks.checkForSave(gem::GEMEVT));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(FieldChecksTest, theSaveTakesOverTheListsSpellingOfAFormat) {
    useDatabase("gem.mdb");
    begin(gem::CSTVDV, EditMode::Adding);
    chooseFormat("u4");
    static_cast<void>(checks.checkForSave(gem::CSTVDV));
    EXPECT_EQ(form[cmbVarFormat].text(), "U4");
}

TEST_F(FieldChecksTest, theLimitEventMustBeNumericToBeLeft) {
    begin(gem::CSTVDV, EditMode::Editing);
    form::Field& ceid = form[txtVarLmtCEID];
    type(ceid, "abc");
    QTest::keyClick(ceid.widget(), Qt::Key_Tab);
    ASSERT_EQ(dialogs.messages.size(), 1u);
    EXPECT_EQ(dialogs.messages[0].text, "Invalid value. Must be an integer.");
    EXPECT_EQ(dialogs.messages[0].icon, form::Icon::Exclamation);
    EXPECT_TRUE(ceid.widget()->hasFocus());
    type(ceid, "1.5");
    leave(ceid);
    typeAndLeave(ceid, "  ");
    EXPECT_EQ(dialogs.messages.size(), 1u);
    EXPECT_EQ(ceid.marker(), "0");
}

TEST_F(FieldChecksTest, theLimitEventIsNotJudgedOnTheWayToCancelOrWhileBrowsing) {
    begin(gem::CSTVDV, EditMode::Editing);
    form::Field& ceid = form[txtVarLmtCEID];
    form.nav.cmdCancel->show();
    type(ceid, "abc");
    form.nav.cmdCancel->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(dialogs.messages.empty());
    state.editMode = EditMode::Browsing;
    ceid.setLocked(true);
    leave(ceid);
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(FieldChecksTest, theLimitEventHandsTheFocusToEditWhenThatIsEnabled) {
    begin(gem::CSTVDV, EditMode::Browsing);
    form.nav.cmdUpdate->setEnabled(true);
    leave(form[txtVarLmtCEID]);
    QTRY_VERIFY(form.nav.cmdUpdate->hasFocus());
    form.nav.cmdUpdate->setEnabled(false);
    leave(form[txtVarLmtCEID]);
    QApplication::processEvents();
    EXPECT_FALSE(form.nav.cmdUpdate->hasFocus());
}

}  // namespace
}  // namespace stelvan::checks
