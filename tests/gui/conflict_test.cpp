// What happens when a save or a delete meets what it did not expect: another program's change, a
// database that cannot be read or written, a value that its column cannot take.
#include <QLabel>

#include "tests/gui/conflict_bench.h"

namespace stelvan::app {
namespace {

using test::Conflict;
using test::kChanged;

TEST_F(Conflict, ARecordChangedMeanwhileIsReportedAndNotOverwritten) {
    open();
    clickCategory(gem::CSTALM);
    goTo("txtAlmID", "102");
    edit();
    type(form()[txtAlmGroup], "Mine");
    elsewhere("UPDATE secs_alarm SET alm_group = 'Theirs' WHERE alm_id = 102");
    save();
    expectOneFailure(kChanged + QString("[frmMain.cmdSave_Click.0]"));
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(form()[txtAlmGroup].text(), "Mine");
    EXPECT_EQ(stored("secs_alarm", "alm_id", "102").value("alm_group"), "Theirs");
    cancel();
    EXPECT_EQ(form()[txtAlmGroup].text(), "Theirs") << "the present values are shown";
    EXPECT_EQ(place(), "2 of 90");
    expectStored();
    edit();
    type(form()[txtAlmGroup], "Mine");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_alarm", "alm_id", "102").value("alm_group"), "Mine");
}

TEST_F(Conflict, LinksOfAChangedRecordStayAsTheyWere) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    edit();
    press(form().reports.deselect);
    elsewhere("UPDATE secs_cusevent SET evt_group = 'Theirs' WHERE evt_id = 162");
    save();
    expectOneFailure(kChanged);
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), 12U);
    EXPECT_EQ(form().reports.selected->rowCount(), 11);
    EXPECT_TRUE(form().reports.pool->isVisible());
}

TEST_F(Conflict, ARecordDeletedMeanwhileLeavesTheSetOnCancel) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(3);
    const QString id = form()[txtAlmID].text();
    edit();
    type(form()[txtAlmGroup], "Mine");
    elsewhere("Delete FROM secs_alarm WHERE alm_id = " + id.toStdString());
    save();
    expectOneFailure(kChanged);
    cancel();
    EXPECT_EQ(place(), "1 of 89");
    expectStored();
}

TEST_F(Conflict, DeletingWhatIsGoneIsReportedAndItLeavesTheSet) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(3);
    const QString id = form()[txtAlmID].text();
    elsewhere("Delete FROM secs_alarm WHERE alm_id = " + id.toStdString());
    answerYesAndDelete();
    ASSERT_EQ(dialogs.messages.size(), 1U);
    dialogs.messages.clear();
    EXPECT_TRUE(place().endsWith("of 89")) << place().toStdString();
    EXPECT_NE(form()[txtAlmID].text(), id);
    expectStored();
}

TEST_F(Conflict, RowsOthersDeletedLeaveTheSetAndTheShownRecordStaysShown) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(10);
    const QString id = form()[txtAlmID].text();
    elsewhere("Delete FROM secs_alarm WHERE alm_id = 101");
    edit();
    type(form()[txtAlmGroup], "Mine");
    save();
    expectStored();
    EXPECT_EQ(place(), "9 of 89");
    EXPECT_EQ(form()[txtAlmID].text(), id);
}

TEST_F(Conflict, AFileThatIsAwayFailsTheSaveOnceAndASecondTryWorks) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    edit();
    type(form()[txtEvtGroup], "Mine");
    press(form().reports.deselect);
    hideFile();
    save();
    ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
    dialogs.messages.clear();
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(form()[txtEvtGroup].text(), "Mine");
    bringBackFile();
    save();
    expectStored();
    EXPECT_EQ(stored("secs_cusevent", "evt_id", "162").value("evt_group"), "Mine");
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), 11U);
}

TEST_F(Conflict, AFailedAdditionCanBeTriedAgainOrGivenUp) {
    open();
    add(gem::CSTALM);
    type(form()[txtAlmName], "NewAlarm");
    type(form()[txtAlmGroup], "Group");
    type(form()[txtAlmText], "Text");
    type(form()[txtAlmID], "5000");
    type(form()[txtAlmSetCEName], QString(300, 'x'));
    save();
    ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
    dialogs.messages.clear();
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    EXPECT_EQ(place(), "91 of 91");
    EXPECT_TRUE(form()[txtAlmID].isOpen());
    cancel();
    expectStored();
    EXPECT_EQ(place(), "1 of 90");
    press(nav().cmdNew);
    for (const auto& [name, text] : {std::pair{"txtAlmID", "5000"},
                                     {"txtAlmName", "NewAlarm"},
                                     {"txtAlmGroup", "Group"},
                                     {"txtAlmText", "Text"}})
        type(field(name), text);
    type(form()[txtAlmSetCEName], QString(300, 'x'));
    save();
    dialogs.messages.clear();
    type(form()[txtAlmSetCEName], "Short");
    save();
    expectStored();
    EXPECT_EQ(place(), "91 of 91");
    EXPECT_EQ(test::exportTable(file(), "secs_alarm").size(), 91U);
}

TEST_F(Conflict, ATextTooLongForItsColumnIsRefusedByTheDatabaseAndNothingIsWritten) {
    open();
    clickCategory(gem::CSTALM);
    goTo("txtAlmID", "102");
    const auto before = test::snapshotOf(file());
    edit();
    type(form()[txtAlmSetCEName], QString(300, 'x'));
    type(form()[txtAlmGroup], "Mine");
    save();
    ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
    EXPECT_TRUE(dialogs.messages[0].text.contains("alm_set_cename"))
        << dialogs.messages[0].text.toStdString();
    dialogs.messages.clear();
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(test::differences(before, test::snapshotOf(file())), QStringList());
    type(form()[txtAlmSetCEName], "Short");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_alarm", "alm_id", "102").value("alm_set_cename"), "Short");
}

TEST_F(Conflict, AListThatCouldNotBeReadIsNotSaved) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "161");
    hideFile();
    press(nav().cmdNext);
    bringBackFile();
    ASSERT_EQ(dialogs.messages.size(), 1U);
    dialogs.messages.clear();
    ASSERT_EQ(form()[txtEvtID].text(), "162");
    ASSERT_EQ(form().reports.selected->rowCount(), 0);
    hideFile();
    edit();
    bringBackFile();
    dialogs.messages.clear();
    save();
    expectOneFailure("ERROR(91) [frmMain.cmdSave_Click.0]");
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), 12U);
    cancel();
    EXPECT_EQ(form().reports.selected->rowCount(), 12);
    edit();
    save();
    expectStored();
}

TEST_F(Conflict, CancelWithoutAFileStillEndsInBrowsing) {
    open();
    clickCategory(gem::CSTEVT);
    edit();
    hideFile();
    cancel();
    EXPECT_EQ(dialogs.messages.size(), 1U) << "the list cannot be filled again";
    dialogs.messages.clear();
    expectBrowsing();
    bringBackFile();
}

TEST_F(Conflict, AddingGoesOnWhereOnlyTheIdentifierCannotBeProposed) {
    open();
    clickCategory(gem::CSTALM);
    hideFile();
    press(nav().cmdNew);
    bringBackFile();
    ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
    dialogs.messages.clear();
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    EXPECT_EQ(form()[txtAlmID].text(), "");
    EXPECT_TRUE(form()[txtAlmName].isOpen());
}

TEST_F(Conflict, WhatIsStoredIsStoredEvenWhereItCannotBeShownAgain) {
    open();
    elsewhere("UPDATE secs_gemvar SET var_unit = NULL WHERE var_id = 2");
    clickCategory(gem::GEMSDV);
    goTo("txtVarID", "2");
    expectOneFailure("ERROR(94) [frmMain.lDisplayField.0]");
    edit();
    EXPECT_EQ(form()[txtVarUnit].text(), "");
    type(form()[txtVarValue], "4");
    save();
    expectOneFailure("ERROR(94) [frmMain.lDisplayField.0]");
    expectBrowsing();
    EXPECT_EQ(stored("secs_gemvar", "var_id", "2").value("var_val"), "4");
    EXPECT_EQ(stored("secs_gemvar", "var_id", "2").value("var_unit"), test::kExportedNull);
}

TEST_F(Conflict, ANameWithAQuoteCannotBeCheckedAndIsRefused) {
    open();
    clickCategory(gem::CSTALM);
    edit();
    type(form()[txtAlmName], "It's");
    dialogs.messages.clear();
    save();
    ASSERT_EQ(dialogs.messages.size(), 2U) << dialogs.texts().join("\n").toStdString();
    EXPECT_EQ(dialogs.messages.back().text,
              "Record cannot be saved. Please correct the exception.");
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
}

TEST_F(Conflict, ARecordWhoseStoredNameHoldsAQuoteStaysEditable) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "248");
    dialogs.messages.clear();
    edit();
    type(form()[txtVarUnit], "mm");
    save();
    expectStored();
    EXPECT_EQ(stored("secs_cusvar", "var_id", "248").value("var_unit"), "mm");
}

}  // namespace
}  // namespace stelvan::app
