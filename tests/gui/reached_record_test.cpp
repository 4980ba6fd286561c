// What the window finds when it comes to a record that another program has deleted or moved to
// another category since the category was loaded.
#include "tests/gui/conflict_bench.h"

namespace stelvan::app {
namespace {

using test::kChanged;

class ReachedRecord : public test::Conflict {};

TEST_F(ReachedRecord, ARecordDeletedMeanwhileIsReportedWhenItIsReachedAndTheNextIsShown) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(2);
    const QString reached = form()[txtAlmID].text();
    goToNumber(3);
    const QString follower = form()[txtAlmID].text();
    goToNumber(1);
    elsewhere("Delete FROM secs_alarm WHERE alm_id = " + reached.toStdString());
    press(nav().cmdNext);
    expectOneFailure(kChanged + QString("[frmMain.lDisplayField.0]"));
    EXPECT_EQ(place(), "2 of 89");
    EXPECT_EQ(form()[txtAlmID].text(), follower);
    press(nav().cmdNext);
    EXPECT_EQ(place(), "3 of 89");
    expectStored();
}

TEST_F(ReachedRecord, BehindTheLastRecordThatIsGoneTheFirstIsShown) {
    open();
    clickCategory(gem::CSTALM);
    const QString first = form()[txtAlmID].text();
    goToNumber(90);
    const QString last = form()[txtAlmID].text();
    goToNumber(89);
    elsewhere("Delete FROM secs_alarm WHERE alm_id = " + last.toStdString());
    press(nav().cmdNext);
    expectOneFailure(kChanged);
    EXPECT_EQ(place(), "1 of 89");
    EXPECT_EQ(form()[txtAlmID].text(), first);
}

TEST_F(ReachedRecord, RecordsThatAreGoneInARowAreReportedOnceAndNoneIsShownUnderTheirNumbers) {
    open();
    clickCategory(gem::CSTALM);
    const QString first = form()[txtAlmID].text();
    elsewhere("Delete FROM secs_alarm WHERE alm_id <> " + first.toStdString());
    press(nav().cmdNext);
    expectOneFailure(kChanged);
    EXPECT_EQ(place(), "1 of 1");
    EXPECT_EQ(form()[txtAlmID].text(), first);
}

TEST_F(ReachedRecord, WhenEveryRecordIsGoneNothingIsShown) {
    open();
    clickCategory(gem::CSTALM);
    elsewhere("Delete FROM secs_alarm");
    press(nav().cmdNext);
    for (const auto& message : dialogs.messages)
        EXPECT_TRUE(message.text.startsWith(kChanged)) << message.text.toStdString();
    EXPECT_EQ(dialogs.messages.size(), 2U) << "those that follow, and the one that was shown";
    EXPECT_EQ(place(), "0 of 0");
    EXPECT_EQ(form()[txtAlmID].text(), "");
    dialogs.messages.clear();
}

TEST_F(ReachedRecord, ARecordThatBecameAnotherCategorysLeavesBeforeItCanBeSaved) {
    open();
    clickCategory(gem::CSTVDV);
    const QString count = place().section(' ', -1);
    goToNumber(2);
    const QString id = form()[txtVarID].text();
    goToNumber(1);
    elsewhere("UPDATE secs_cusvar SET var_type = 'SV' WHERE var_id = " + id.toStdString());
    press(nav().cmdNext);
    expectOneFailure(kChanged);
    EXPECT_EQ(place(), "2 of " + QString::number(count.toInt() - 1));
    EXPECT_NE(form()[txtVarID].text(), id);
    EXPECT_EQ(stored("secs_cusvar", "var_id", id).value("var_type"), "SV");
}

}  // namespace
}  // namespace stelvan::app
