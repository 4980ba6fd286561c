// A record's whole way through the window: added, edited, saved, cancelled, deleted, and read from
// the file.
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>

#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

class EditingFlow : public WindowBench {
protected:
    void SetUp() override { open(); }
    [[nodiscard]] const form::Navigator& nav() const { return form().nav; }
    [[nodiscard]] QString position() const { return nav().lblRecNumber->text(); }

    void typeAll(const std::vector<std::pair<QString, QString>>& texts) {
        for (const auto& [name, text] : texts) typeAndLeave(name, text);
    }
    void save() {
        press(nav().cmdSave);
        EXPECT_EQ(state().editMode, form::EditMode::Browsing) << exceptions().toStdString();
        EXPECT_TRUE(dialogs.texts().isEmpty()) << dialogs.texts().join("\n").toStdString();
    }
};

TEST_F(EditingFlow, AlarmIsAddedEditedAndDeleted) {
    clickCategory(gem::CSTALM);
    press(nav().cmdNew);
    EXPECT_EQ(position(), "91 of 91");
    EXPECT_EQ(form()[txtAlmID].text(), "");  // the highest identifier is taken
    typeAll({{"txtAlmName", "DoorOpen"},
             {"txtAlmID", "900"},
             {"txtAlmGroup", "Door"},
             {"txtAlmText", "Open."}});
    save();
    EXPECT_EQ(position(), "91 of 91");
    EXPECT_EQ(
        query("SELECT alm_name, alm_group, alm_text, alm_set_ceid, alm_set_cename FROM secs_alarm "
              "WHERE alm_id = 900"),
        QStringList{"DoorOpen|Door|Open.|0|NULL"});

    press(nav().cmdUpdate);
    EXPECT_FALSE(form()[txtAlmID].isOpen());
    typeAndLeave("txtAlmGroup", "Doors");
    save();
    EXPECT_EQ(query("SELECT alm_group FROM secs_alarm WHERE alm_id = 900"), QStringList{"Doors"});

    dialogs.answers = {true};
    press(nav().cmdDelete);
    EXPECT_EQ(position(), "1 of 90");
    EXPECT_TRUE(query("SELECT alm_id FROM secs_alarm WHERE alm_id = 900").isEmpty());
    EXPECT_EQ(dialogs.questions.front().text, "Delete current record ?");
}

TEST_F(EditingFlow, RefusedSaveKeepsEverythingTypedAndWritesNothing) {
    clickCategory(gem::CSTEVT);
    press(nav().cmdNew);
    typeAll({{"txtEvtName", "Has Blank"}, {"txtEvtGroup", "G"}});
    press(nav().cmdSave);
    EXPECT_EQ(dialogs.texts(),
              QStringList{"Record cannot be saved. Please correct the exception."});
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    EXPECT_EQ(form()[txtEvtName].text(), "Has Blank");
    EXPECT_TRUE(form()[txtEvtName].isOpen());
    EXPECT_EQ(query("SELECT evt_id FROM secs_cusevent").size(), 70);
    press(nav().cmdCancel);
    EXPECT_EQ(position(), "1 of 70");
    EXPECT_EQ(exceptions(), "");
}

TEST_F(EditingFlow, ReportsOfAnEventAreLinkedInTheOrderOfTheList) {
    clickCategory(gem::CSTEVT);
    press(nav().cmdUpdate);
    const QString id = form()[txtEvtID].text();
    const form::TwoListEditor& reports = form().reports;
    while (reports.selected->rowCount() > 0) press(reports.deselect);
    for (const int row : {4, 3, 5}) {
        reports.pool->selectRow(row);
        press(reports.select);
    }
    reports.selected->selectRow(2);
    press(reports.orderUp);
    QStringList wanted;
    for (int row = 0; row < 3; ++row)
        wanted << reports.selected->text(row, 1) + "|" + QString::number(row + 1);
    save();
    EXPECT_EQ(query("SELECT rpt_id, rpt_order FROM secs_def_evt_rpt WHERE evt_id = " +
                    id.toStdString() + " ORDER BY rpt_order"),
              wanted);
    EXPECT_TRUE(reports.pool->isHidden());
    EXPECT_EQ(reports.selected->rowCount(), 3);
}

TEST_F(EditingFlow, VariableIsAddedWithItsFormatChosenFromTheList) {
    clickCategory(gem::CSTVDV);
    press(nav().cmdNew);
    EXPECT_FALSE(form()[txtVarMin].isOpen());
    typeAll({{"txtVarName", "NewOne"}, {"txtVarGroup", "G"}, {"txtVarDesc", "Text"}});
    type(form()[cmbVarFormat], "u4");
    leave(form()[cmbVarFormat]);
    EXPECT_EQ(form()[cmbVarFormat].text(), "U4");
    EXPECT_TRUE(form()[txtVarMin].isOpen());
    typeAndLeave("txtVarValue", "12");
    const std::string id = form()[txtVarID].text().toStdString();
    save();
    EXPECT_EQ(
        query("SELECT var_type, var_format, var_min, var_max, var_unit, var_val, var_defaultval, "
              "var_parentkey FROM secs_cusvar WHERE var_id = " +
              id),
        QStringList{"DV|U4|0|0|NULL|12|0|0"});
    EXPECT_EQ(form()[txtVarMin].text(), "");
}

TEST_F(EditingFlow, GemEventSavesItsEnableFlagOnly) {
    clickCategory(gem::GEMEVT);
    const QString before = query("SELECT * FROM secs_gemevent").join("\n");
    press(nav().cmdUpdate);
    EXPECT_TRUE(form()[chkEvtEnable].widget()->hasFocus());
    const bool on = form()[chkEvtEnable].checked();
    QTest::keyClick(form()[chkEvtEnable].widget(), Qt::Key_Space);
    save();
    EXPECT_EQ(form()[chkEvtEnable].checked(), !on);
    press(nav().cmdUpdate);
    QTest::keyClick(form()[chkEvtEnable].widget(), Qt::Key_Space);
    save();
    EXPECT_EQ(query("SELECT * FROM secs_gemevent").join("\n"), before);
}

TEST_F(EditingFlow, SettingIsChosenInItsComboBox) {
    clickCategory(gem::GEMSTT);
    goTo("txtSttName", "BaudRate");
    press(nav().cmdUpdate);
    EXPECT_TRUE(form()[cmbSttValue].widget()->hasFocus());
    QTest::keyClick(form()[cmbSttValue].widget(), Qt::Key_Home);
    save();
    EXPECT_EQ(query("SELECT set_value FROM secs_setting WHERE set_field = 'BaudRate'"),
              QStringList{"19200"});
}

TEST_F(EditingFlow, CancelShowsTheStoredRecordAgain) {
    clickCategory(gem::CSTRPT);
    for (int i = 0; i < 4; ++i) press(nav().cmdNext);
    const QString name = form()[txtRptName].text();
    const int variables = form().variables.selected->rowCount();
    press(nav().cmdUpdate);
    type(form()[txtRptName], "Other");
    press(form().variables.select);
    press(nav().cmdCancel);
    EXPECT_EQ(position(), "5 of 60");
    EXPECT_EQ(form()[txtRptName].text(), name);
    EXPECT_EQ(form().variables.selected->rowCount(), variables);
    EXPECT_TRUE(dialogs.texts().isEmpty());
    EXPECT_TRUE(form().tvwSECSItem->isEnabled());
}

TEST_F(EditingFlow, ViewingAllWhileAddingLeavesThePendingRecordAlone) {
    clickCategory(gem::CSTALM);
    press(nav().cmdNew);
    typeAll({{"txtAlmName", "Pending"}, {"txtAlmID", "901"}});
    form().tspData->setCurrentIndex(1);
    EXPECT_EQ(form().DBGridGEM->model()->rowCount(), 90);
    EXPECT_FALSE(nav().cmdSave->isEnabled());
    QTest::keyClick(window.get(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    form().tspData->setCurrentIndex(0);
    EXPECT_TRUE(nav().cmdSave->isEnabled());
    EXPECT_EQ(form()[txtAlmName].text(), "Pending");
    typeAll({{"txtAlmGroup", "G"}, {"txtAlmText", "T"}});
    save();
    EXPECT_EQ(query("SELECT alm_name FROM secs_alarm WHERE alm_id = 901"), QStringList{"Pending"});
}

TEST_F(EditingFlow, RecordWithNullsIsShownWholeBeforeItIsEdited) {
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "252");
    press(nav().cmdNext);
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().startsWith("ERROR(94) [frmMain.lDisplayField.0]:"));
    dialogs.messages.clear();
    press(nav().cmdUpdate);
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(form()[txtVarID].text(), "253");
    EXPECT_TRUE(dialogs.texts().isEmpty());
}

TEST_F(EditingFlow, ShortcutsReachSaveAndCancel) {
    clickCategory(gem::CSTALM);
    for (const Qt::Key key : {Qt::Key_S, Qt::Key_C}) {
        press(nav().cmdUpdate);
        QTest::keyClick(form()[txtAlmText].widget(), key, Qt::AltModifier);
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return state().editMode == form::EditMode::Browsing; }));
        EXPECT_TRUE(nav().cmdUpdate->hasFocus());
    }
    EXPECT_TRUE(dialogs.texts().isEmpty());
}

}  // namespace
}  // namespace stelvan::test
