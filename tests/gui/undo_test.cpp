// "Undo": what was saved and deleted is taken back, the last first, and shown again.
#include <QLabel>

#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

class Undo : public test::AidsBench {
protected:
    void SetUp() override { open(); }

    [[nodiscard]] QAction* undo() const { return tool(form::Tool::Undo); }
    void pressUndo() {
        ASSERT_TRUE(undo()->isEnabled());
        key(Qt::Key_Z, Qt::ControlModifier);
    }
    /// Every row that records, links and children are made of.
    [[nodiscard]] QStringList content() const {
        QStringList all;
        for (const char* table : {"secs_alarm", "secs_cusevent", "secs_cusvar", "secs_def_evt_rpt",
                                  "secs_gemvar", "secs_report", "secs_rpt_var", "secs_setting"}) {
            QStringList rows = query(std::string("SELECT * FROM ") + table);
            rows.sort();
            all << rows;
        }
        return all;
    }
    void editAndSave(const char* name, const QString& text) {
        edit();
        typeAndLeave(name, text);
        save();
        expectStored();
    }
    [[nodiscard]] QString status() const { return form().statusPanel->text(); }
};

TEST_F(Undo, ASaveIsTakenBackAndItsRecordShown) {
    showReport("103");
    const QString id = shown("txtRptID");
    const QString before = shown("txtRptDesc");
    const QStringList file = content();
    EXPECT_FALSE(undo()->isEnabled());
    EXPECT_EQ(undo()->toolTip(), "Undo the last save or delete (Ctrl+Z)");
    editAndSave("txtRptDesc", "Something else");
    EXPECT_EQ(undo()->toolTip(), QString("Undo save of report %1 (Ctrl+Z)").arg(id));
    EXPECT_NE(content(), file);
    pressUndo();
    EXPECT_EQ(content(), file);
    EXPECT_EQ(shown("txtRptID"), id);
    EXPECT_EQ(shown("txtRptDesc"), before);
    EXPECT_EQ(status(), QString("Undone: save of report %1").arg(id));
    EXPECT_EQ(undo()->toolTip(), "Undo the last save or delete (Ctrl+Z)");
    EXPECT_FALSE(undo()->isEnabled());
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(Undo, ADeletedEventComesBackWithItsReports) {
    const QString event = query(
                              "SELECT evt_id FROM secs_def_evt_rpt WHERE rpt_order = 2 AND "
                              "evt_id IN (SELECT evt_id FROM secs_cusevent)")
                              .value(0);
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", event);
    const QStringList linked = columnOf(form().reports.selected, 1);
    ASSERT_GT(linked.size(), 1);
    const QStringList file = content();
    answerYesAndDelete();
    EXPECT_NE(shown("txtEvtID"), event);
    pressUndo();
    EXPECT_EQ(content(), file);
    EXPECT_EQ(shown("txtEvtID"), event);
    EXPECT_EQ(columnOf(form().reports.selected, 1), linked);
}

TEST_F(Undo, ADeletedListHasItsChildrenAgain) {
    const QString list =
        query("SELECT var_parentkey FROM secs_cusvar WHERE var_parentkey > 0 AND var_type = 'SV'")
            .value(0);
    ASSERT_NE(list, "");
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", list);
    const QStringList children = columnOf(form().children.selected, 2);
    ASSERT_FALSE(children.isEmpty());
    const QStringList file = content();
    answerYesAndDelete();
    pressUndo();
    EXPECT_EQ(content(), file);
    EXPECT_EQ(columnOf(form().children.selected, 2), children);
}

TEST_F(Undo, GoesBackUnitByUnitFromWhereverTheUserIs) {
    const QStringList first = content();
    clickCategory(gem::CSTALM);
    const QString alarm = shown("txtAlmID");
    editAndSave("txtAlmText", "One text");
    const QStringList second = content();
    editAndSave("txtAlmText", "Another text");
    const QStringList third = content();
    showReport("102");
    const QString report = shown("txtRptID");
    answerYesAndDelete();
    clickCategory(gem::CSTEVT);
    pressUndo();
    EXPECT_EQ(content(), third);
    EXPECT_EQ(state().category, gem::CSTRPT);
    EXPECT_EQ(shown("txtRptID"), report);
    pressUndo();
    EXPECT_EQ(content(), second);
    EXPECT_EQ(state().category, gem::CSTALM);
    EXPECT_EQ(shown("txtAlmID"), alarm);
    EXPECT_EQ(shown("txtAlmText"), "One text");
    viewAll();
    pressUndo();
    EXPECT_EQ(content(), first);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_EQ(shown("txtAlmID"), alarm);
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(Undo, AnAdditionGoesAndTheRecordOnScreenStays) {
    const QStringList file = content();
    add(gem::CSTEVT);
    typeAndLeave("txtEvtName", "Mine");
    typeAndLeave("txtEvtGroup", "g");
    typeAndLeave("txtEvtDesc", "d");
    save();
    expectStored();
    const QString id = shown("txtEvtID");
    EXPECT_EQ(undo()->toolTip(), QString("Undo save of event %1 (Ctrl+Z)").arg(id));
    goToNumber(4);
    const QString seen = shown("txtEvtID");
    pressUndo();
    EXPECT_EQ(content(), file);
    EXPECT_EQ(shown("txtEvtID"), seen);
    EXPECT_EQ(status(), QString("Undone: save of event %1").arg(id));
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(Undo, SettingsAndStandardItemsAreTakenBackToo) {
    const QStringList file = content();
    clickCategory(gem::GEMSTT);
    goTo("txtSttName", "T3Timeout");
    const QString before = shown("txtSttValue");
    editAndSave("txtSttValue", before == "44" ? "43" : "44");
    EXPECT_EQ(undo()->toolTip(), "Undo save of setting T3Timeout (Ctrl+Z)");
    clickCategory(gem::GEMEVT);
    edit();
    check(&field("chkEvtEnable"), !field("chkEvtEnable").checked());
    save();
    expectStored();
    pressUndo();
    pressUndo();
    EXPECT_EQ(content(), file);
    EXPECT_EQ(shown("txtSttName"), "T3Timeout");
    EXPECT_EQ(shown("txtSttValue"), before);
}

TEST_F(Undo, InAFieldThatIsEditedTheKeyIsTheFields) {
    showReport("101");
    editAndSave("txtRptDesc", "Saved");
    const QStringList file = content();
    edit();
    EXPECT_FALSE(undo()->isEnabled());
    for (const char* name : {"txtRptName", "txtRptDesc"}) {
        QWidget* const box = field(name).widget();
        const QString before = shown(name);
        box->setFocus();
        QTest::keyClicks(box, "typed");
        ASSERT_NE(shown(name), before);
        QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(shown(name), before) << name;
    }
    QTest::keyClick(form().nav.cmdSave, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(content(), file);
    cancel();
    EXPECT_TRUE(undo()->isEnabled());
    EXPECT_TRUE(tool(form::Tool::Duplicate)->isEnabled());
}

TEST_F(Undo, WorksWithTheFocusInAClosedFieldAndLeavesTheFindBoxItsOwn) {
    const QStringList file = content();
    showReport("101");
    for (const char* name : {"txtRptName", "txtRptDesc"}) {
        editAndSave("txtRptDesc", QString("Saved with ") + name);
        field(name).widget()->setFocus();
        pressUndo();
        EXPECT_EQ(content(), file) << name;
    }
    editAndSave("txtRptDesc", "Stays");
    const QStringList saved = content();
    find("abc");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(aids().txtFind->text(), "");
    EXPECT_EQ(content(), saved);
}

TEST_F(Undo, WhatAnotherProgramChangedIsNotOverwritten) {
    showReport("101");
    const QString id = shown("txtRptID");
    editAndSave("txtRptDesc", "Mine");
    ASSERT_TRUE(test::elsewhere(
        file(), "UPDATE secs_report SET rpt_desc = 'Theirs' WHERE rpt_id = " + id.toStdString()));
    const QStringList theirs = content();
    pressUndo();
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains(
        QString("Save of report %1 cannot be undone: what it touched has been changed since")
            .arg(id)))
        << dialogs.texts().first().toStdString();
    EXPECT_EQ(content(), theirs);
    expectBrowsing();
    EXPECT_TRUE(undo()->isEnabled());
}

TEST_F(Undo, IsForgottenWithTheDatabase) {
    showReport("101");
    editAndSave("txtRptDesc", "Mine");
    window->start(form::toQt(scratch.copyOf(test::model("gem.mdb"), "other.mdb").string()));
    EXPECT_FALSE(undo()->isEnabled());
    EXPECT_EQ(undo()->toolTip(), "Undo the last save or delete (Ctrl+Z)");
}

TEST_F(Undo, TakesBackWhatOthersNoted) {
    clickCategory(gem::CSTALM);
    goToNumber(2);
    const QString shownBefore = shown("txtAlmID");
    const QStringList before = content();
    {
        db::UnitOfWork unit(file(), db::UnitOfWork::Notes::RowChanges);
        db::Connection connection;
        window->window().operations.lExecCommand(connection,
                                                 "UPDATE secs_alarm SET alm_text = 'Taken in'");
        unit.commit();
        all().editing.undo.noteDone("Import of line3", unit.changes());
    }
    EXPECT_EQ(undo()->toolTip(), "Undo import of line3 (Ctrl+Z)");
    pressUndo();
    EXPECT_EQ(content(), before);
    EXPECT_EQ(shown("txtAlmID"), shownBefore);
    EXPECT_NE(shown("txtAlmText"), "Taken in");
    EXPECT_EQ(status(), "Undone: import of line3");
}

TEST_F(Undo, IsNoChangeByAnotherProgram) {
    showReport("101");
    editAndSave("txtRptDesc", "Mine");
    pressUndo();
    QTest::qWait(1200);
    EXPECT_FALSE(aids().lblNotice->isVisible());
}

}  // namespace
}  // namespace stelvan::app
