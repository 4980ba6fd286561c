// A typical change in each category, and what a save leaves in the file: read back by another
// reader.
#include <QComboBox>
#include <QLabel>

#include "tests/gui/edit_bench.h"

namespace stelvan::app {
namespace {

using test::ExportedRow;

class Save : public test::EditBench {
protected:
    test::Snapshot before;

    void begin(std::int16_t category, const QString& idField = {}, const QString& id = {}) {
        open();
        clickCategory(category);
        if (!idField.isEmpty()) goTo(idField, id);
        before = test::snapshotOf(file());
        edit();
    }
    void beginAdding(std::int16_t category) {
        open();
        before = test::snapshotOf(file());
        add(category);
    }
    [[nodiscard]] QStringList changes() const {
        return test::differences(before, test::snapshotOf(file()));
    }
};

TEST_F(Save, AGemEventWritesOnlyItsEnableFlag) {
    begin(gem::GEMEVT, "txtEvtID", "2");
    const ExportedRow was = stored("secs_gemevent", "evt_id", "2");
    check(&form()[chkEvtEnable], false);
    save();
    expectStored();
    ExportedRow is = stored("secs_gemevent", "evt_id", "2");
    EXPECT_EQ(is.value("evt_enable"), "0");
    is["evt_enable"] = was.value("evt_enable");
    EXPECT_EQ(is, was);
    EXPECT_EQ(changes(), QStringList{"secs_gemevent +1 -1"});
    EXPECT_FALSE(form()[chkEvtEnable].checked());
    EXPECT_EQ(place(), "2 of 25");
}

TEST_F(Save, AGemVariableWritesValueAndDefaultAlone) {
    const std::tuple<std::int16_t, const char*, const char*> variables[] = {
        {gem::GEMSDV, "2", "3"}, {gem::GEMVDV, "30", "2"}, {gem::GEMVEC, "49", "75"}};
    for (const auto& [category, id, value] : variables) {
        begin(category, "txtVarID", id);
        ExportedRow expected = stored("secs_gemvar", "var_id", id);
        type(form()[txtVarValue], value);
        type(form()[txtVarDefValue], value);
        save();
        expectStored();
        expected["var_val"] = value;
        expected["var_defaultval"] = value;
        EXPECT_EQ(stored("secs_gemvar", "var_id", id), expected);
        EXPECT_EQ(changes(), QStringList{"secs_gemvar +1 -1"});
    }
}

TEST_F(Save, AGemTextVariableKeepsItsStoredPlaceholders) {
    begin(gem::GEMSDV, "txtVarID", "7");
    const ExportedRow was = stored("secs_gemvar", "var_id", "7");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_gemvar", "var_id", "7"), was);
}

TEST_F(Save, AnAlarmIsChanged) {
    begin(gem::CSTALM, "txtAlmID", "102");
    type(form()[txtAlmName], " Sc1TooCold ");
    type(form()[txtAlmSetCEID], "");
    type(form()[txtAlmSetCEName], "");
    check(&form()[chkAlmEnable], false);
    save();
    expectStored();
    const ExportedRow row = stored("secs_alarm", "alm_id", "102");
    EXPECT_EQ(row.value("alm_name"), "Sc1TooCold");
    EXPECT_EQ(row.value("alm_enable"), "0");
    EXPECT_EQ(row.value("alm_set_ceid"), "0") << "a blank event identifier";
    EXPECT_EQ(row.value("alm_set_cename"), "NULL") << "a blank event name";
    EXPECT_EQ(row.value("alm_clr_ceid"), "102");
    EXPECT_EQ(row.value("alm_clr_cename"), "Sc1AlarmCleared");
    EXPECT_EQ(changes(), QStringList{"secs_alarm +1 -1"});
    EXPECT_EQ(form()[txtAlmName].text(), "Sc1TooCold");
    EXPECT_EQ(form()[txtAlmSetCEID].text(), "") << "and shows blank again";
    EXPECT_EQ(place(), "2 of 90");
}

TEST_F(Save, AnAlarmIsAdded) {
    beginAdding(gem::CSTALM);
    type(form()[txtAlmID], "5000");
    type(form()[txtAlmName], "DoorOpen");
    type(form()[txtAlmGroup], "Safety");
    form()[txtAlmText].widget()->setFocus();
    QTest::keyClicks(form()[txtAlmText].widget(), "one");
    QTest::keyClick(form()[txtAlmText].widget(), Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(form()[txtAlmText].widget(), "two");
    check(&form()[chkAlmEnable], true);
    save();
    expectStored();
    const ExportedRow row = stored("secs_alarm", "alm_id", "5000");
    EXPECT_EQ(row.value("alm_text"), "one\r\ntwo");
    EXPECT_EQ(row.value("alm_enable"), "1");
    EXPECT_EQ(row.value("alm_set_ceid"), "0");
    EXPECT_EQ(row.value("alm_clr_cename"), "NULL");
    EXPECT_EQ(changes(), QStringList{"secs_alarm +1 -0"});
    EXPECT_EQ(place(), "91 of 91") << "the new record is the one shown";
    EXPECT_EQ(form()[txtAlmName].text(), "DoorOpen");
}

TEST_F(Save, AnEventAndItsReportsAreChanged) {
    begin(gem::CSTEVT, "txtEvtID", "162");
    const form::TwoListEditor& reports = form().reports;
    type(form()[txtEvtDesc], "Changed");
    press(reports.deselect);
    take(reports, 1, "141", reports.select, reports.pool);
    reports.selected->selectRow(reports.selected->rowCount() - 1);
    press(reports.orderUp);
    const QStringList wanted = columnOf(reports.selected, 1);
    save();
    expectStored();
    EXPECT_EQ(ordered("secs_def_evt_rpt", "evt_id", "162", "rpt_id", "rpt_order"), wanted);
    EXPECT_EQ(ordered("secs_def_evt_rpt", "evt_id", "162", "rpt_order", "rpt_order").first(), "1");
    EXPECT_EQ(stored("secs_cusevent", "evt_id", "162").value("evt_text"), "Changed");
    EXPECT_EQ(changes().size(), 2);
    EXPECT_EQ(columnOf(reports.selected, 1), wanted);
    EXPECT_TRUE(reports.pool->isHidden());
}

TEST_F(Save, AnEmptyReportListRemovesAllRowsOfTheEvent) {
    begin(gem::CSTEVT, "txtEvtID", "162");
    while (form().reports.selected->rowCount() > 0) press(form().reports.deselect);
    save();
    expectStored();
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), 0U);
    EXPECT_EQ(changes(), QStringList{"secs_def_evt_rpt +0 -12"});
}

TEST_F(Save, AnEventIsAddedWithItsReports) {
    beginAdding(gem::CSTEVT);
    EXPECT_EQ(form()[txtEvtID].text(), "171");
    type(form()[txtEvtName], "LotDone");
    type(form()[txtEvtGroup], "Lot");
    type(form()[txtEvtDesc], "The lot is done");
    const form::TwoListEditor& reports = form().reports;
    for (const char* id : {"126", "110"}) take(reports, 1, id, reports.select, reports.pool);
    save();
    expectStored();
    EXPECT_EQ(ordered("secs_def_evt_rpt", "evt_id", "171", "rpt_id", "rpt_order"),
              QStringList({"126", "110"}));
    EXPECT_EQ(stored("secs_cusevent", "evt_id", "171").value("evt_enable"), "0");
    EXPECT_EQ(changes(), QStringList({"secs_cusevent +1 -0", "secs_def_evt_rpt +2 -0"}));
}

TEST_F(Save, AVariableIsChangedInEachCustomCategory) {
    const std::pair<std::int16_t, const char*> variables[] = {
        {gem::CSTVDV, "1001"}, {gem::CSTVSV, "101"}, {gem::CSTVEC, "2001"}};
    for (const auto& [category, id] : variables) {
        begin(category, "txtVarID", id);
        ExportedRow expected = stored("secs_cusvar", "var_id", id);
        type(form()[txtVarName], "Renamed");
        type(form()[txtVarMax], "50");
        type(form()[txtVarValue], "7");
        type(form()[txtVarDefValue], "8");
        type(form()[txtVarUnit], "mm");
        save();
        expectStored();
        expected["var_name"] = "Renamed";
        expected["var_max"] = "50";
        expected["var_val"] = "7";
        expected["var_defaultval"] = "8";
        expected["var_unit"] = "mm";
        EXPECT_EQ(stored("secs_cusvar", "var_id", id), expected) << id;
        EXPECT_EQ(changes(), QStringList{"secs_cusvar +1 -1"});
        EXPECT_EQ(form()[txtVarName].text(), "Renamed");
    }
}

TEST_F(Save, BlankLimitsAreZeroForNumbersAndNullForTexts) {
    for (const auto& [format, blank] :
         {std::pair{"U4", "0"}, {"B", "0"}, {"A", "NULL"}, {"BL", "NULL"}}) {
        beginAdding(gem::CSTVSV);
        const QString id = form()[txtVarID].text();
        type(form()[txtVarName], "NewVariable");
        type(form()[txtVarGroup], "Group");
        type(form()[txtVarDesc], "Description");
        type(form()[cmbVarFormat], format);
        save();
        expectStored();
        const ExportedRow row = stored("secs_cusvar", "var_id", id);
        for (const char* column : {"var_min", "var_max", "var_val", "var_defaultval"})
            EXPECT_EQ(row.value(column), blank) << format << ' ' << column;
        EXPECT_EQ(row.value("var_unit"), "NULL");
        EXPECT_EQ(row.value("var_format"), format);
        EXPECT_EQ(row.value("var_type"), "SV");
        for (const char* column : {"var_parentkey", "var_accessid", "var_allowduplicates"})
            EXPECT_EQ(row.value(column), "0") << column;
        EXPECT_EQ(form()[txtVarMin].text(), "");
        EXPECT_EQ(form()[txtVarMax].text(), "");
        EXPECT_EQ(changes(), QStringList{"secs_cusvar +1 -0"});
    }
}

TEST_F(Save, TheTypeOfAnAddedVariableIsThatOfItsCategory) {
    for (const auto& [category, typeCode] :
         {std::pair{gem::CSTVDV, "DV"}, {gem::CSTVSV, "SV"}, {gem::CSTVEC, "EC"}}) {
        beginAdding(category);
        const QString id = form()[txtVarID].text();
        type(form()[txtVarName], "NewVariable");
        type(form()[txtVarGroup], "Group");
        type(form()[txtVarDesc], "Description");
        type(form()[cmbVarFormat], "A");
        save();
        expectStored();
        EXPECT_EQ(stored("secs_cusvar", "var_id", id).value("var_type"), typeCode);
    }
}

TEST_F(Save, ABooleanDefaultIsStoredInUpperCaseAndItsValueAsTyped) {
    beginAdding(gem::CSTVEC);
    const QString id = form()[txtVarID].text();
    type(form()[txtVarName], "NewVariable");
    type(form()[txtVarGroup], "Group");
    type(form()[txtVarDesc], "Description");
    type(form()[cmbVarFormat], "BL");
    leave(form()[cmbVarFormat]);
    type(form()[txtVarDefValue], " true ");
    type(form()[txtVarValue], "False");
    save();
    expectStored();
    const ExportedRow row = stored("secs_cusvar", "var_id", id);
    EXPECT_EQ(row.value("var_defaultval"), "TRUE");
    EXPECT_EQ(row.value("var_val"), "False");
    EXPECT_EQ(form()[txtVarDefValue].text(), "TRUE") << "shown as stored";
}

TEST_F(Save, AListVariableAndItsChildrenAreChanged) {
    begin(gem::CSTVSV, "txtVarID", "227");
    const form::TwoListEditor& children = form().children;
    ASSERT_EQ(columnOf(children.selected, 2), QStringList({"235", "234", "233", "232", "231"}));
    take(children, 2, "233", children.deselect, children.selected);
    take(children, 1, "101", children.select, children.pool);
    take(children, 2, "101", children.orderUp, children.selected);
    const QStringList wanted{"235", "234", "232", "101", "231"};
    ASSERT_EQ(columnOf(children.selected, 2), wanted);
    save();
    expectStored();
    EXPECT_EQ(ordered("secs_cusvar", "var_parentkey", "227", "var_id", "var_accessid"), wanted);
    EXPECT_EQ(ordered("secs_cusvar", "var_parentkey", "227", "var_accessid", "var_accessid"),
              QStringList({"1", "2", "3", "4", "5"}));
    const ExportedRow released = stored("secs_cusvar", "var_id", "233");
    EXPECT_EQ(released.value("var_parentkey"), "0");
    EXPECT_EQ(released.value("var_accessid"), "0");
    EXPECT_EQ(columnOf(children.selected, 2), wanted);
    EXPECT_TRUE(children.pool->isHidden());
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    EXPECT_EQ(columnOf(children.selected, 2), wanted);
}

TEST_F(Save, AListThatBecomesANumberReleasesItsChildren) {
    begin(gem::CSTVSV, "txtVarID", "228");
    type(form()[cmbVarFormat], "U1");
    leave(form()[cmbVarFormat]);
    save();
    expectStored();
    EXPECT_EQ(countOf("secs_cusvar", "var_parentkey", "228"), 0U);
    EXPECT_EQ(stored("secs_cusvar", "var_id", "236").value("var_parentkey"), "0");
    EXPECT_TRUE(form().children.selected->isHidden());
}

TEST_F(Save, AListIsAddedWithAnOnlyChildThatMayBeDuplicated) {
    beginAdding(gem::CSTVSV);
    const QString id = form()[txtVarID].text();
    type(form()[txtVarName], "NewList");
    type(form()[txtVarGroup], "Lists");
    type(form()[txtVarDesc], "Description");
    type(form()[cmbVarFormat], "L");
    leave(form()[cmbVarFormat]);
    const form::TwoListEditor& children = form().children;
    take(children, 1, "102", children.select, children.pool);
    const QRect box = children.selected->visualRect(children.selected->model()->index(0, 0));
    QTest::mouseClick(children.selected->viewport(), Qt::LeftButton, {},
                      QPoint(box.left() + 10, box.center().y()));
    ASSERT_TRUE(children.selected->isChecked(0));
    save();
    expectStored();
    const ExportedRow child = stored("secs_cusvar", "var_id", "102");
    EXPECT_EQ(child.value("var_parentkey"), id);
    EXPECT_EQ(child.value("var_accessid"), "1");
    EXPECT_EQ(child.value("var_allowduplicates"), "1");
    EXPECT_EQ(stored("secs_cusvar", "var_id", id).value("var_format"), "L");
    EXPECT_EQ(changes(), QStringList{"secs_cusvar +2 -1"});
}

TEST_F(Save, AReportAndItsVariablesAreChanged) {
    begin(gem::CSTRPT, "txtRptID", "126");
    const form::TwoListEditor& variables = form().variables;
    const QStringList inOrder = columnOf(variables.selected, 1);
    ASSERT_EQ(inOrder.size(), 14);
    check(&form()[chkRptDefault], false);
    take(variables, 1, inOrder[13], variables.orderUp, variables.selected);
    QStringList wanted = inOrder;
    wanted.swapItemsAt(12, 13);
    save();
    expectStored();
    EXPECT_EQ(ordered("secs_rpt_var", "rpt_id", "126", "var_id", "var_order"), wanted);
    EXPECT_EQ(stored("secs_report", "rpt_id", "126").value("rpt_default"), "0");
    EXPECT_EQ(changes(), QStringList({"secs_report +1 -1", "secs_rpt_var +2 -2"}));
}

TEST_F(Save, AReportIsAddedWithVariablesOfBothTables) {
    beginAdding(gem::CSTRPT);
    const QString id = form()[txtRptID].text();
    type(form()[txtRptName], "NewReport");
    type(form()[txtRptDesc], "Description");
    const form::TwoListEditor& variables = form().variables;
    for (const char* variable : {"101", "2", "1001"})
        take(variables, 1, variable, variables.select, variables.pool);
    save();
    expectStored();
    EXPECT_EQ(ordered("secs_rpt_var", "rpt_id", id, "var_id", "var_order"),
              QStringList({"101", "2", "1001"}));
    EXPECT_EQ(columnOf(variables.selected, 4), QStringList({"1", "2", "3"}))
        << "the numbers just written";
    EXPECT_EQ(changes(), QStringList({"secs_report +1 -0", "secs_rpt_var +3 -0"}));
}

TEST_F(Save, AReportWithoutVariablesIsRefused) {
    beginAdding(gem::CSTRPT);
    type(form()[txtRptName], "NewReport");
    type(form()[txtRptDesc], "Description");
    save();
    EXPECT_EQ(dialogs.texts(),
              QStringList{"Record cannot be saved. Please correct the exception."});
    EXPECT_EQ(exceptions(), "[Report Variable List]: Must contain item.\r\n");
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    EXPECT_EQ(form()[txtRptName].text(), "NewReport");
    EXPECT_EQ(changes(), QStringList());
}

TEST_F(Save, ASettingIsTypedOrChosen) {
    begin(gem::GEMSTT, "txtSttName", "T3Timeout");
    type(form()[txtSttValue], " 60 ");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_setting", "set_field", "T3Timeout").value("set_value"), "60");
    EXPECT_EQ(changes(), QStringList{"secs_setting +1 -1"});

    begin(gem::GEMSTT, "txtSttName", "BaudRate");
    auto* combo = qobject_cast<QComboBox*>(form()[cmbSttValue].widget());
    ASSERT_TRUE(combo->isVisible());
    QTest::keyClick(combo, Qt::Key_Home);
    save();
    expectStored();
    EXPECT_EQ(stored("secs_setting", "set_field", "BaudRate").value("set_value"), "19200");
    EXPECT_EQ(stored("secs_setting", "set_field", "BaudRate").value("set_defaultval"), "9600");
}

TEST_F(Save, ARefusedSettingWritesNothing) {
    begin(gem::GEMSTT, "txtSttName", "T3Timeout");
    type(form()[txtSttValue], "121");
    save();
    EXPECT_EQ(dialogs.texts(),
              QStringList{"Record cannot be saved. Please correct the exception."});
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(changes(), QStringList());
    type(form()[txtSttValue], "120");
    dialogs.messages.clear();
    save();
    expectStored();
}

TEST_F(Save, ARefusalLeavesEverythingAsTypedAndASecondTryWorks) {
    begin(gem::CSTALM, "txtAlmID", "102");
    type(form()[txtAlmName], "two words");
    save();
    EXPECT_EQ(dialogs.texts(),
              QStringList{"Record cannot be saved. Please correct the exception."});
    EXPECT_EQ(form()[txtAlmName].text(), "two words");
    EXPECT_TRUE(form()[txtAlmName].isOpen());
    EXPECT_EQ(changes(), QStringList());
    dialogs.messages.clear();
    type(form()[txtAlmName], "OneWord");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_alarm", "alm_id", "102").value("alm_name"), "OneWord");
}

TEST_F(Save, AnIdentifierThatIsTooLargeIsReportedAndRefused) {
    beginAdding(gem::CSTALM);
    type(form()[txtAlmID], "99999999999");
    type(form()[txtAlmName], "NewAlarm");
    type(form()[txtAlmGroup], "Group");
    type(form()[txtAlmText], "Text");
    dialogs.messages.clear();
    save();
    ASSERT_GE(dialogs.messages.size(), 2U);
    EXPECT_TRUE(
        dialogs.messages.front().text.startsWith("ERROR(6) [frmMain.txtAlmID_LostFocus.0]"));
    EXPECT_EQ(dialogs.messages.back().text,
              "Record cannot be saved. Please correct the exception.");
    EXPECT_EQ(changes(), QStringList());
}

TEST_F(Save, ByMnemonicFromWithinAField) {
    begin(gem::CSTALM, "txtAlmID", "102");
    type(form()[txtAlmGroup], "Other");
    QTest::keyClick(form()[txtAlmGroup].widget(), Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return state().editMode == form::EditMode::Browsing; }));
    expectStored();
    EXPECT_EQ(stored("secs_alarm", "alm_id", "102").value("alm_group"), "Other");
    EXPECT_EQ(QApplication::focusWidget(), nav().cmdUpdate);
}

TEST_F(Save, UnchangedRecordsOfEveryCategoryAreWrittenBackAsTheyWere) {
    for (const std::int16_t category : {gem::GEMEVT, gem::GEMVDV, gem::GEMVEC, gem::CSTALM,
                                        gem::CSTEVT, gem::CSTVDV, gem::CSTVSV, gem::CSTVEC}) {
        begin(category);
        save();
        expectStored();
        EXPECT_EQ(changes(), QStringList()) << category;
    }
    begin(gem::CSTRPT, "txtRptID", "126");
    save();
    expectStored();
    EXPECT_EQ(changes(), QStringList());
}

}  // namespace
}  // namespace stelvan::app
