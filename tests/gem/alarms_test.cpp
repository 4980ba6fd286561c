// The two events of an alarm: each by itself, and against the other side.
#include "gem/alarms.h"

#include <gtest/gtest.h>

#include "gem/judge.h"

namespace stelvan::gem {
namespace {

using enum Control;

TEST(AlarmEvents, bothSidesOfOneNameAreMarkedAndReleasedTogether) {
    Record alarm(CSTALM);
    alarm[txtAlmSetCEID].text = " 101";
    alarm[txtAlmClrCEID].text = "101 ";
    judgeAlarmEvent(alarm, txtAlmClrCEID);
    EXPECT_EQ(alarm[txtAlmSetCEID].fault, ALM_SETID_EQ_CLRID);
    EXPECT_EQ(alarm[txtAlmClrCEID].fault, ALM_SETID_EQ_CLRID);
    alarm[txtAlmClrCEID].text = "102";
    judgeAlarmEvent(alarm, txtAlmClrCEID);
    EXPECT_EQ(alarm[txtAlmSetCEID].fault, NO_EXCEPTION);
    EXPECT_EQ(alarm[txtAlmClrCEID].fault, NO_EXCEPTION);
}

TEST(AlarmEvents, namesHaveACodeOfTheirOwn) {
    Record alarm(CSTALM);
    alarm[txtAlmSetCEName].text = alarm[txtAlmClrCEName].text = "Door";
    judgeAlarmEvent(alarm, txtAlmSetCEName);
    EXPECT_EQ(alarm[txtAlmClrCEName].fault, ALM_SETNAME_EQ_CLRNAME);
    alarm[txtAlmSetCEName].text = "Do or";
    judgeAlarmEvent(alarm, txtAlmSetCEName);
    EXPECT_EQ(alarm[txtAlmSetCEName].fault, SPACE_BETWEEN);
}

TEST(AlarmEvents, anIdentifierNamesAnEventFrom101) {
    Record alarm(CSTALM);
    alarm[txtAlmSetCEID].text = "100";
    judgeAlarmEvent(alarm, txtAlmSetCEID);
    EXPECT_EQ(alarm[txtAlmSetCEID].fault, EVT_ID_INVALID_RANGE);
}

TEST(AlarmEvents, anEmptyFieldKeepsItsFaultUntilTheSaveReleasesIt) {
    Record alarm(CSTALM);
    alarm[txtAlmSetCEID].fault = ALM_SETID_EQ_CLRID;
    alarm[txtAlmClrCEID].text = "102";
    alarm[txtAlmClrCEID].fault = REQUIRE_NUMERIC;
    judgeAlarmEvent(alarm, txtAlmSetCEID);
    EXPECT_EQ(alarm[txtAlmSetCEID].fault, ALM_SETID_EQ_CLRID);
    releaseEmptyAlarmEvents(alarm);
    EXPECT_EQ(alarm[txtAlmSetCEID].fault, NO_EXCEPTION);
    EXPECT_EQ(alarm[txtAlmClrCEID].fault, REQUIRE_NUMERIC);
}

TEST(AlarmEvents, partnersAreOfOneSideAndOppositesOfOneKind) {
    for (const AlarmEventField& entry : alarmEventFields()) {
        EXPECT_EQ(alarmEventField(entry.opposite).opposite, entry.field);
        EXPECT_EQ(alarmEventField(entry.partner).partner, entry.field);
        EXPECT_EQ(nameOf(entry.field).substr(0, 9), nameOf(entry.partner).substr(0, 9));
    }
    EXPECT_THROW((void)alarmEventField(txtAlmID), std::logic_error);
}

}  // namespace
}  // namespace stelvan::gem
