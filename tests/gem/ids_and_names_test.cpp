#include "gem/ids_and_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

std::vector<std::string> spelled(std::span<const SearchedColumn> columns) {
    std::vector<std::string> all;
    for (const SearchedColumn& c : columns) all.push_back(std::string(c.table) + "." + c.column);
    return all;
}

using Columns = std::vector<std::string>;

TEST(FieldRules, alarmIdsStartAtOneAllOthersAt101) {
    EXPECT_EQ(checkId("0", kAlarmRules), ALM_ID_INVALID_RANGE);
    EXPECT_EQ(checkId("1", kAlarmRules), NO_EXCEPTION);
    EXPECT_EQ(checkId("100", kEventRules), EVT_ID_INVALID_RANGE);
    EXPECT_EQ(checkId("101", kEventRules), NO_EXCEPTION);
    EXPECT_EQ(checkId("100", kReportRules), RPT_ID_INVALID_RANGE);
    EXPECT_EQ(checkId("101", kReportRules), NO_EXCEPTION);
    EXPECT_EQ(checkId("100", kVariableRules), VAR_ID_INVALID_RANGE);
    EXPECT_EQ(checkId("101", kVariableRules), NO_EXCEPTION);
}

TEST(FieldRules, idTestsRunInOrder) {
    for (const RecordRules* rules : {&kAlarmRules, &kEventRules, &kReportRules, &kVariableRules}) {
        EXPECT_EQ(checkId("", *rules), NULL_STRING);
        EXPECT_EQ(checkId("   ", *rules), NULL_STRING);
        EXPECT_EQ(checkId("1 5", *rules), SPACE_BETWEEN);
        EXPECT_EQ(checkId("a b", *rules), SPACE_BETWEEN);
        EXPECT_EQ(checkId("abc", *rules), REQUIRE_NUMERIC);
        EXPECT_EQ(checkId("200.0", *rules), REQUIRE_INTEGER);
        EXPECT_EQ(checkId("-5", *rules), rules->idRange);
        EXPECT_EQ(checkId(" 2147483647 ", *rules), NO_EXCEPTION);
        EXPECT_THROW(static_cast<void>(checkId("2147483648", *rules)), base::RunTimeError);
    }
}

TEST(FieldRules, duplicatesAreSearchedTableByTable) {
    EXPECT_EQ(spelled(kAlarmRules.ids), Columns({"secs_alarm.alm_id"}));
    EXPECT_EQ(spelled(kEventRules.ids), Columns({"secs_cusevent.evt_id", "secs_gemevent.evt_id"}));
    EXPECT_EQ(spelled(kReportRules.ids), Columns({"secs_report.rpt_id"}));
    EXPECT_EQ(spelled(kVariableRules.ids), Columns({"secs_gemvar.var_id", "secs_cusvar.var_id"}));
    EXPECT_EQ(spelled(kAlarmRules.names), Columns({"secs_alarm.alm_name"}));
    EXPECT_EQ(spelled(kEventRules.names),
              Columns({"secs_gemevent.evt_name", "secs_cusevent.evt_name"}));
    EXPECT_EQ(spelled(kReportRules.names), Columns({"secs_report.rpt_name"}));
    EXPECT_EQ(spelled(kVariableRules.names),
              Columns({"secs_cusvar.var_name", "secs_gemvar.var_name"}));
}

TEST(FieldRules, namesAndGroupsAreNotEmptyAndHoldNoInnerBlank) {
    for (const auto check : {&checkName, &checkGroup}) {
        EXPECT_EQ(check(""), NULL_STRING);
        EXPECT_EQ(check("  "), NULL_STRING);
        EXPECT_EQ(check("Lot Start"), SPACE_BETWEEN);
        EXPECT_EQ(check("  LotStart "), NO_EXCEPTION);
    }
}

TEST(FieldRules, textsAreNotEmpty) {
    EXPECT_EQ(checkText(""), NULL_STRING);
    EXPECT_EQ(checkText("   "), NULL_STRING);
    EXPECT_EQ(checkText("two words"), NO_EXCEPTION);
}

TEST(FieldRules, anAlarmsEventFollowsTheEventsOwnIdRule) {
    EXPECT_EQ(checkCeid("1 5"), SPACE_BETWEEN);
    EXPECT_EQ(checkCeid("abc"), REQUIRE_NUMERIC);
    EXPECT_EQ(checkCeid("101.0"), REQUIRE_INTEGER);
    EXPECT_EQ(checkCeid("100"), EVT_ID_INVALID_RANGE);
    EXPECT_EQ(checkCeid("101"), NO_EXCEPTION);
    EXPECT_THROW(static_cast<void>(checkCeid("2147483648")), base::RunTimeError);
    EXPECT_EQ(checkCeName("Lot Start"), SPACE_BETWEEN);
    EXPECT_EQ(checkCeName(" LotStart "), NO_EXCEPTION);
}

TEST(FieldRules, aPairIsTheSameWhenBothAreThereAndEqual) {
    EXPECT_TRUE(samePair(" 101", "101 "));
    EXPECT_FALSE(samePair("", ""));
    EXPECT_FALSE(samePair("  ", " "));
    EXPECT_FALSE(samePair("101", ""));
    EXPECT_FALSE(samePair("101", "0101"));
    EXPECT_FALSE(samePair("Lot", "LOT"));
}

TEST(FieldRules, quotedTextsAreTrimmedAndNothingIsDoubled) {
    EXPECT_EQ(sqlText(" Lot "), "'Lot'");
    EXPECT_EQ(sqlText("O'Brien"), "'O'Brien'");
}

}  // namespace
}  // namespace stelvan::gem
