// Links and children belong to their record: what another program does to them while the record is
// edited is a conflict, and nothing of it is lost.
#include "tests/gui/edit_bench.h"

namespace stelvan::app {
namespace {

constexpr auto kChanged = "ERROR(-2147217864) [frmMain.cmdSave_Click.0]";

class OwnedRows : public test::EditBench {
protected:
    void elsewhere(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText(window->window().operations.connectionText());
        connection.open();
        connection.execute(sql);
    }
    void expectConflict() {
        ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
        EXPECT_TRUE(dialogs.messages[0].text.startsWith(kChanged))
            << dialogs.messages[0].text.toStdString();
        dialogs.messages.clear();
        EXPECT_EQ(state().editMode, form::EditMode::Editing);
    }
};

TEST_F(OwnedRows, AReportThatAnotherProgramLinkedIsNotUnlinkedByASave) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    edit();
    const int shown = form().reports.selected->rowCount();
    elsewhere("INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (162, 101, 99)");
    save();
    expectConflict();
    cancel();
    EXPECT_EQ(form().reports.selected->rowCount(), shown + 1) << "the present rows are shown";
    edit();
    save();
    expectStored();
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), static_cast<std::size_t>(shown + 1));
}

TEST_F(OwnedRows, EditingBeginsWithWhatTheFileHoldsThen) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    const int shown = form().reports.selected->rowCount();
    elsewhere("INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (162, 101, 99)");
    edit();
    EXPECT_EQ(form().reports.selected->rowCount(), shown + 1);
    save();
    expectStored();
    EXPECT_EQ(countOf("secs_def_evt_rpt", "evt_id", "162"), static_cast<std::size_t>(shown + 1));
}

TEST_F(OwnedRows, AVariableThatAnotherProgramAddedToTheReportStays) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "126");
    edit();
    elsewhere("INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (126, 101, 99)");
    save();
    expectConflict();
    EXPECT_EQ(query("SELECT var_id FROM secs_rpt_var WHERE rpt_id = 126 AND var_order = 99"),
              QStringList{"101"});
}

TEST_F(OwnedRows, AVariableThatAnotherProgramTookOutOfTheReportStaysOut) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "126");
    edit();
    elsewhere("DELETE FROM secs_rpt_var WHERE rpt_id = 126 AND var_order = 1");
    save();
    expectConflict();
    EXPECT_EQ(query("SELECT var_id FROM secs_rpt_var WHERE rpt_id = 126 AND var_order = 1"),
              QStringList{});
}

TEST_F(OwnedRows, AChildThatAnotherProgramAddedToTheListIsNotReleased) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    elsewhere("UPDATE secs_cusvar SET var_parentkey = 227 WHERE var_id = 111");
    save();
    expectConflict();
    EXPECT_EQ(query("SELECT var_parentkey FROM secs_cusvar WHERE var_id = 111"),
              QStringList{"227"});
}

TEST_F(OwnedRows, AVariableThatAnotherListTookMeanwhileIsNotTakenFromIt) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    const form::TwoListEditor& children = form().children;
    QString chosen;
    for (int row = 0; row < children.pool->rowCount() && chosen.isEmpty(); ++row) {
        if (children.pool->text(row, 1) != "111") continue;
        children.pool->selectRow(row);
        press(children.select);
        chosen = "111";
    }
    ASSERT_EQ(chosen, "111");
    elsewhere("UPDATE secs_cusvar SET var_parentkey = 228 WHERE var_id = 111");
    save();
    expectConflict();
    EXPECT_EQ(query("SELECT var_parentkey FROM secs_cusvar WHERE var_id = 111"),
              QStringList{"228"});
}

TEST_F(OwnedRows, AChildThatWasTakenOutCanBeChosenAgain) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    const form::TwoListEditor& children = form().children;
    const QString taken = children.selected->text(0, 2);
    const auto poolIds = [&children] {
        QStringList ids;
        for (const form::ListRow& row : children.pool->rows()) ids << row.texts.value(1);
        return ids;
    };
    ASSERT_FALSE(poolIds().contains(taken));
    children.selected->selectRow(0);
    press(children.deselect);
    ASSERT_EQ(poolIds().count(taken), 1);
    type(form()[cmbVarFormat], "U4");
    type(form()[cmbVarFormat], "L");
    ASSERT_EQ(poolIds().count(taken), 1) << "also after the format went away and came back";
    children.pool->selectRow(static_cast<int>(poolIds().indexOf(taken)));
    press(children.select);
    EXPECT_EQ(children.selected->text(children.selected->rowCount() - 1, 2), taken);
    save();
    expectStored();
}

TEST_F(OwnedRows, AListThatBecomesANumberReleasesItsChildrenHoweverTheFileSpellsItsColumns) {
    for (const char* file : {"gem.mdb", "gem_spellings.mdb"}) {
        open(file);
        clickCategory(gem::CSTVSV);
        goTo("txtVarID", "227");
        const auto children = query("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227");
        ASSERT_FALSE(children.isEmpty()) << file;
        edit();
        type(form()[cmbVarFormat], "U4");
        save();
        expectStored();
        EXPECT_EQ(query("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227"), QStringList{})
            << file;
        window.reset();
    }
}

TEST_F(OwnedRows, ASecondTryAfterASaveThatFailedHalfWayReleasesTheChildrenAllTheSame) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    type(form()[cmbVarFormat], "U4");
    // What a save that failed behind it leaves pending.
    state().current.records->setField("var_format", std::string("U4"));
    save();
    expectStored();
    EXPECT_EQ(query("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227"), QStringList{});
}

TEST_F(OwnedRows, WhileABoxIsOpenOthersCanWrite) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "126");
    edit();
    elsewhere("DELETE FROM secs_rpt_var WHERE rpt_id = 126 AND var_order = 1");
    int written = 0;
    dialogs.whileShown = [&](const QString&) {
        elsewhere("UPDATE secs_report SET rpt_desc = 'by another' WHERE rpt_id = 127");
        ++written;
    };
    save();
    dialogs.whileShown = nullptr;
    EXPECT_EQ(written, 1) << "no unit of work was open while the failure was shown";
    expectConflict();
}

TEST_F(OwnedRows, AListFillsItsPoolAsSoonAsItHasAnIdentifier) {
    open();
    elsewhere("UPDATE secs_cusvar SET var_id = 2147483647 WHERE var_id = 258");
    add(gem::CSTVSV);
    ASSERT_EQ(form()[txtVarID].text(), "") << "there is no next one";
    type(form()[cmbVarFormat], "L");
    EXPECT_EQ(form().children.pool->rowCount(), 0);
    typeAndLeave("txtVarID", "5001");
    EXPECT_GT(form().children.pool->rowCount(), 0);
}

}  // namespace
}  // namespace stelvan::app
