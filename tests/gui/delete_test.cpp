// Deleting: the prompt, the guard, what goes along and what is released, and which record follows.
#include <QLabel>

#include "tests/gui/edit_bench.h"

namespace stelvan::app {
namespace {

class Delete : public test::EditBench {
protected:
    test::Snapshot before;

    void begin(std::int16_t category, const QString& idField = {}, const QString& id = {}) {
        open();
        clickCategory(category);
        if (!idField.isEmpty()) goTo(idField, id);
        before = test::snapshotOf(file());
    }
    [[nodiscard]] QStringList changes() const {
        return test::differences(before, test::snapshotOf(file()));
    }
};

TEST_F(Delete, AnsweringNoChangesNothing) {
    begin(gem::CSTALM);
    dialogs.answers.push_back(false);
    press(nav().cmdDelete);
    ASSERT_EQ(dialogs.questions.size(), 1U);
    EXPECT_EQ(dialogs.questions[0].text, "Delete current record ?");
    EXPECT_EQ(dialogs.questions[0].title, "Delete confirmation");
    EXPECT_EQ(changes(), QStringList());
    EXPECT_EQ(place(), "1 of 90");
}

TEST_F(Delete, AnAlarmGoesAloneAndItsFollowerTakesItsPlace) {
    begin(gem::CSTALM);
    goToNumber(6);
    const QString follower = form()[txtAlmID].text();
    goToNumber(5);
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(changes(), QStringList{"secs_alarm +0 -1"});
    EXPECT_EQ(place(), "5 of 89");
    EXPECT_EQ(form()[txtAlmID].text(), follower);
    EXPECT_TRUE(nav().cmdDelete->isEnabled() && nav().cmdUpdate->isEnabled());
}

TEST_F(Delete, AfterTheLastComesTheFirst) {
    begin(gem::CSTALM);
    const QString first = form()[txtAlmID].text();
    goToNumber(90);
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(place(), "1 of 89");
    EXPECT_EQ(form()[txtAlmID].text(), first);
}

TEST_F(Delete, TheOnlyRecordLeavesNothing) {
    open("gem_edges.mdb");
    clickCategory(gem::CSTALM);
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(place(), "0 of 0");
    EXPECT_EQ(form()[txtAlmID].text(), "");
    EXPECT_FALSE(nav().cmdDelete->isEnabled() || nav().cmdUpdate->isEnabled());
    EXPECT_TRUE(nav().cmdNew->isEnabled());
    EXPECT_TRUE(test::exportTable(file(), "secs_alarm").empty());
}

TEST_F(Delete, SeveralInARow) {
    begin(gem::CSTALM);
    for (int left = 89; left > 80; --left) {
        answerYesAndDelete();
        EXPECT_EQ(place(), QStringLiteral("1 of %1").arg(left));
    }
    expectStored();
    EXPECT_EQ(changes(), QStringList{"secs_alarm +0 -9"});
}

TEST_F(Delete, AnEventTakesItsLinksAlong) {
    begin(gem::CSTEVT, "txtEvtID", "162");
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(changes(), QStringList({"secs_cusevent +0 -1", "secs_def_evt_rpt +0 -12"}));
    EXPECT_EQ(form()[txtEvtID].text(), "163");
}

TEST_F(Delete, AListReleasesItsChildrenInPlace) {
    for (const auto& [category, id] : {std::pair{gem::CSTVSV, "227"}, {gem::CSTVDV, "1057"}}) {
        begin(category, "txtVarID", id);
        const QStringList children =
            ordered("secs_cusvar", "var_parentkey", id, "var_id", "var_accessid");
        ASSERT_FALSE(children.isEmpty());
        answerYesAndDelete();
        expectStored();
        EXPECT_EQ(countOf("secs_cusvar", "var_id", id), 0U);
        for (const QString& child : children) {
            const auto row = stored("secs_cusvar", "var_id", child);
            EXPECT_EQ(row.value("var_parentkey"), "0");
            EXPECT_NE(row.value("var_accessid"), "0") << "nothing else of a child changes";
        }
    }
}

TEST_F(Delete, AnEquipmentConstantHasNoCascade) {
    begin(gem::CSTVEC, "txtVarID", "2001");
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(changes(), QStringList{"secs_cusvar +0 -1"});
}

TEST_F(Delete, AReportIsUnlinkedFromEveryEventAndLosesItsVariables) {
    begin(gem::CSTRPT, "txtRptID", "126");
    const auto links = static_cast<int>(countOf("secs_def_evt_rpt", "rpt_id", "126"));
    ASSERT_GT(links, 0);
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(changes(), QStringList({QStringLiteral("secs_def_evt_rpt +0 -%1").arg(links),
                                      "secs_report +0 -1", "secs_rpt_var +0 -14"}));
}

TEST_F(Delete, ReservedReportsAreGuardedAfterThePrompt) {
    begin(gem::CSTRPT, "txtRptID", "100");
    dialogs.answers.push_back(true);
    all().editing.commands.cmdDelete_Click();
    EXPECT_EQ(dialogs.questions.size(), 1U);
    ASSERT_EQ(dialogs.texts(),
              QStringList{"ReportID of 0 to 100 is reserved for GEM and cannot be deleted."});
    EXPECT_EQ(dialogs.messages[0].icon, form::Icon::Exclamation);
    EXPECT_EQ(changes(), QStringList());
    dialogs.messages.clear();
    goTo("txtRptID", "101");
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(countOf("secs_report", "rpt_id", "101"), 0U);
}

TEST_F(Delete, ARecordShownOnlyInPartTakesNothingElseAlong) {
    begin(gem::CSTVSV);
    while (dialogs.messages.empty()) press(nav().cmdNext);
    dialogs.messages.clear();
    answerYesAndDelete();
    EXPECT_EQ(countOf("secs_cusvar", "var_id", "253"), 0U);
    EXPECT_EQ(changes(), QStringList{"secs_cusvar +0 -1"});
}

}  // namespace
}  // namespace stelvan::app
