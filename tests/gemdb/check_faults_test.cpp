// gemdb check finds each fault that is put into a model that has none, by its rule, item and field,
// and nothing beside it.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

/// The demo model, as the build ships it.
std::string demoModel() {
    return std::string(STELVAN_BINARY_DIR) + "/share/stelvan/demo-template.mdb";
}

/// "error dangling-event secs_def_evt_rpt 9999 evt_id", sorted.
std::vector<std::string> findingsIn(const std::string& file) {
    const ProgramRun run = runGemdb({"check", "--json", file});
    EXPECT_EQ(run.err, "");
    std::vector<std::string> findings;
    for (const std::string& line : splitLines(run.out)) {
        const nlohmann::json finding = nlohmann::json::parse(line);
        const auto text = [&](const char* member) { return finding[member].get<std::string>(); };
        const nlohmann::json& id = finding["id"];
        findings.push_back(text("severity") + " " + text("rule") + " " + text("table") + " " +
                           (id.is_string() ? id.get<std::string>() : id.dump()) + " " +
                           text("field"));
        EXPECT_NE(text("text"), "");
        EXPECT_NE(text("mend"), "");
    }
    std::ranges::sort(findings);
    return findings;
}

struct Fault {
    const char* label;
    std::vector<std::string> statements;
    std::vector<std::string> findings;
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.label;
}

class SeededFaultTest : public ::testing::TestWithParam<Fault> {};

TEST_P(SeededFaultTest, IsFoundAndNothingElse) {
    const ScratchDir folder;
    const std::string file = folder.copyOf(demoModel());
    const std::vector<std::string> before = findingsIn(file);
    std::vector<std::string> arguments = {"sql", file};
    arguments.insert(arguments.end(), GetParam().statements.begin(), GetParam().statements.end());
    const ProgramRun change = runGemdb(arguments);
    ASSERT_EQ(change.status, 0) << change.err;

    std::vector<std::string> found;
    std::ranges::set_difference(findingsIn(file), before, std::back_inserter(found));
    std::vector<std::string> expected = GetParam().findings;
    std::ranges::sort(expected);
    EXPECT_EQ(found, expected);
    const bool serious = std::ranges::any_of(
        expected, [](const std::string& finding) { return !finding.starts_with("note"); });
    EXPECT_EQ(runGemdb({"check", file}).status, serious ? 1 : 0);
}

std::string setVariable(const std::string& change, int id) {
    return "UPDATE secs_cusvar SET " + change + " WHERE var_id = " + std::to_string(id);
}
std::string setAlarm(const std::string& change) {
    return "UPDATE secs_alarm SET " + change + " WHERE alm_id = 1";
}
std::string setSetting(const std::string& change, const std::string& name) {
    return "UPDATE secs_setting SET " + change + " WHERE set_field = '" + name + "'";
}
std::string sends(const std::string& eventReportOrder) {
    return "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (" + eventReportOrder +
           ")";
}
std::string carries(const std::string& reportVariableOrder) {
    return "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (" + reportVariableOrder +
           ")";
}
std::string newEvent(int id) {
    return "INSERT INTO secs_cusevent (evt_id, evt_name, evt_group, evt_text, evt_enable) VALUES "
           "(" +
           std::to_string(id) + ", 'Added', 'Tool', 'Added.', 1)";
}
std::string newVariable(int id) {
    return "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_group, var_desc, var_format, "
           "var_min, var_max, var_unit, var_defaultval, var_val, var_parentkey, var_accessid, "
           "var_allowduplicates) VALUES (" +
           std::to_string(id) +
           ", 'Added', 'SV', 'Tool', 'Added.', 'A', 'NULL', 'NULL', 'NULL', 'NULL', 'NULL', 0, 0, "
           "0)";
}

std::string nameOf(const ::testing::TestParamInfo<Fault>& info) {
    return info.param.label;
}

INSTANTIATE_TEST_SUITE_P(
    Nulls, SeededFaultTest,
    ::testing::Values(Fault{"VariableName",
                            {setVariable("var_name = Null", 110)},
                            {"error null-field secs_cusvar 110 var_name"}},
                      Fault{"VariableValueOfTheStandard",
                            {"UPDATE secs_gemvar SET var_val = Null WHERE var_id = 2"},
                            {"error null-field secs_gemvar 2 var_val"}},
                      Fault{"FlagOfAnEvent",
                            {"UPDATE secs_gemevent SET evt_enable = Null WHERE evt_id = 1"},
                            {"error null-field secs_gemevent 1 evt_enable"}},
                      Fault{"AlarmText",
                            {setAlarm("alm_text = Null")},
                            {"error null-field secs_alarm 1 alm_text"}},
                      Fault{"ReportText",
                            {"UPDATE secs_report SET rpt_desc = Null WHERE rpt_id = 101"},
                            {"error null-field secs_report 101 rpt_desc"}},
                      Fault{"DefaultOfASetting",
                            {setSetting("set_defaultval = Null", "DeviceID")},
                            {"error null-field secs_setting DeviceID set_defaultval"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Fields, SeededFaultTest,
    ::testing::Values(
        Fault{"EmptyName",
              {setVariable("var_name = ''", 110)},
              {"error invalid-field secs_cusvar 110 var_name"}},
        Fault{"BlankInAName",
              {setVariable("var_name = 'Tool Operator'", 110)},
              {"error invalid-field secs_cusvar 110 var_name"}},
        Fault{"EmptyGroup",
              {"UPDATE secs_cusevent SET evt_group = '' WHERE evt_id = 101"},
              {"error invalid-field secs_cusevent 101 evt_group"}},
        Fault{"BlankInAGroup",
              {setAlarm("alm_group = 'To ol'")},
              {"error invalid-field secs_alarm 1 alm_group"}},
        Fault{"TextOfBlanks",
              {"UPDATE secs_report SET rpt_desc = '  ' WHERE rpt_id = 101"},
              {"error invalid-field secs_report 101 rpt_desc"}},
        Fault{"NoFormat",
              {setVariable("var_format = ''", 110)},
              {"error invalid-field secs_cusvar 110 var_format"}},
        Fault{"UnknownFormat",
              {setVariable("var_format = 'U9'", 101)},
              {"error invalid-field secs_cusvar 101 var_format"}},
        Fault{"ListInAList",
              {setVariable("var_parentkey = 228, var_accessid = 7", 223)},
              {"error invalid-field secs_cusvar 223 var_format"}},
        Fault{"UnknownType",
              {setVariable("var_type = 'XX'", 110)},
              {"error invalid-field secs_cusvar 110 var_type"}},
        Fault{"ByteAboveItsFormat",
              {setVariable("var_val = '256'", 102)},
              {"error invalid-field secs_cusvar 102 var_val"}},
        Fault{"ByteAtItsBorder", {setVariable("var_val = '255'", 102)}, {}},
        Fault{"NoNumber",
              {setVariable("var_val = 'abc'", 104)},
              {"error invalid-field secs_cusvar 104 var_val"}},
        Fault{"FractionInAnInteger",
              {setVariable("var_defaultval = '1.5'", 104)},
              {"error invalid-field secs_cusvar 104 var_defaultval"}},
        Fault{"LimitAboveI1",
              {setVariable("var_max = '128'", 132)},
              {"error invalid-field secs_cusvar 132 var_max"}},
        Fault{"LimitBelowI2",
              {setVariable("var_min = '-32769'", 123)},
              {"error invalid-field secs_cusvar 123 var_min"}},
        Fault{"NoBoolean",
              {setVariable("var_val = 'YES'", 107)},
              {"error invalid-field secs_cusvar 107 var_val"}},
        Fault{"LimitAboveF8",
              {setVariable("var_max = '1.75e308'", 111)},
              {"error invalid-field secs_cusvar 111 var_max"}},
        Fault{"ValueOfTheStandardAboveItsFormat",
              {"UPDATE secs_gemvar SET var_val = '300' WHERE var_id = 2"},
              {"error invalid-field secs_gemvar 2 var_val"}},
        Fault{"AlarmZero", {setAlarm("alm_id = 0")}, {"error invalid-field secs_alarm 0 alm_id"}},
        Fault{"EventBelowZero",
              {newEvent(-5)},
              {"error invalid-field secs_cusevent -5 evt_id",
               "note unreported-event secs_cusevent -5 "}},
        Fault{"AlarmWithAnEventOfTheStandard",
              {setAlarm("alm_set_ceid = 100, alm_set_cename = 'NULL'")},
              {"error invalid-field secs_alarm 1 alm_set_ceid"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Overflows, SeededFaultTest,
    ::testing::Values(
        Fault{"Value",
              {setVariable("var_val = '2147483648'", 105)},
              {"error invalid-field secs_cusvar 105 var_val"}},
        Fault{"OnlyTheLimitThatIsTooLarge",
              {setVariable("var_max = '9999999999'", 105)},
              {"error invalid-field secs_cusvar 105 var_max"}},
        Fault{"LimitOfASingle",
              {setVariable("var_max = '3.5e38'", 108)},
              {"error invalid-field secs_cusvar 108 var_max"}},
        Fault{"NoneForAFormatOf64Bits", {setVariable("var_max = '9999999999999'", 212)}, {}},
        Fault{"Setting",
              {setSetting("set_value = '99999999999'", "DeviceID")},
              {"error setting-invalid secs_setting DeviceID set_value"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Limits, SeededFaultTest,
    ::testing::Values(
        Fault{"MinimumAboveMaximum",
              {setVariable("var_min = '5'", 101)},
              {"error out-of-limits secs_cusvar 101 var_min",
               "error out-of-limits secs_cusvar 101 var_max",
               "error out-of-limits secs_cusvar 101 var_val",
               "error out-of-limits secs_cusvar 101 var_defaultval"}},
        Fault{"BlankMaximumCountsAsZero",
              {setVariable("var_max = ''", 123)},
              {"error out-of-limits secs_cusvar 123 var_val"}},
        Fault{"NoLimitsAtAll", {setVariable("var_min = 'NULL', var_max = ' 0 '", 123)}, {}},
        Fault{"DefaultAboveMaximum",
              {setVariable("var_defaultval = '1.6'", 109)},
              {"error out-of-limits secs_cusvar 109 var_defaultval"}},
        Fault{"DefaultAtMaximum", {setVariable("var_defaultval = '1.5'", 109)}, {}},
        Fault{"ValueOfTheStandard",
              {"UPDATE secs_gemvar SET var_val = '6' WHERE var_id = 2"},
              {"error out-of-limits secs_gemvar 2 var_val"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Alarms, SeededFaultTest,
    ::testing::Values(
        Fault{"SameEventTwice",
              {setAlarm("alm_clr_ceid = 129, alm_clr_cename = 'NULL'")},
              {"error alarm-pair secs_alarm 1 alm_set_ceid",
               "error alarm-pair secs_alarm 1 alm_clr_ceid"}},
        Fault{"SameNameTwice",
              {setAlarm("alm_clr_ceid = 0, alm_clr_cename = 'ToolAlarmSet'")},
              {"error alarm-pair secs_alarm 1 alm_set_cename",
               "error alarm-pair secs_alarm 1 alm_clr_cename"}},
        Fault{"UnknownEvent",
              {setAlarm("alm_set_ceid = 9999")},
              {"warning alarm-event-missing secs_alarm 1 alm_set_ceid"}},
        Fault{"UnknownName",
              {setAlarm("alm_clr_ceid = 0, alm_clr_cename = 'Nobody'")},
              {"warning alarm-event-missing secs_alarm 1 alm_clr_cename"}},
        Fault{"NameOfAnotherEvent",
              {setAlarm("alm_set_cename = 'LotStarted'")},
              {"warning alarm-event-mismatch secs_alarm 1 alm_set_cename"}},
        Fault{"NameInOtherLetters", {setAlarm("alm_set_cename = 'toolalarmset'")}, {}},
        Fault{"NoEvents",
              {setAlarm("alm_set_ceid = 0, alm_set_cename = 'NULL', alm_clr_ceid = 0, "
                        "alm_clr_cename = ''")},
              {}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Identities, SeededFaultTest,
    ::testing::Values(
        Fault{"IdentifierOfTheStandardToo",
              {"UPDATE secs_gemvar SET var_id = 110 WHERE var_id = 91"},
              {"error duplicate-id secs_cusvar 110 var_id",
               "note standard-item-missing secs_gemvar 91 var_id"}},
        Fault{"EventIdentifierOfTheStandardToo",
              {"DELETE FROM secs_def_evt_rpt WHERE evt_id = 21",
               "UPDATE secs_gemevent SET evt_id = 101 WHERE evt_id = 21"},
              {"error duplicate-id secs_cusevent 101 evt_id",
               "note standard-item-missing secs_gemevent 21 evt_id",
               "note unused-report secs_report 12 "}},
        Fault{"NameOfTheStandardInOtherLetters",
              {setVariable("var_name = 'CLOCK'", 110)},
              {"error duplicate-name secs_cusvar 110 var_name"}},
        Fault{"NameWithOuterBlanks",
              {"UPDATE secs_cusevent SET evt_name = ' EquipmentOffline ' WHERE evt_id = 101"},
              {"error duplicate-name secs_cusevent 101 evt_name"}},
        Fault{"TwoReportsOfOneName",
              {"UPDATE secs_report SET rpt_name = ' LotReport' WHERE rpt_id = 102"},
              {"error duplicate-name secs_report 101 rpt_name",
               "error duplicate-name secs_report 102 rpt_name"}},
        Fault{"VariableOfTheStandardsRange",
              {newVariable(100)},
              {"warning reserved-id secs_cusvar 100 var_id"}},
        Fault{"VariableBehindIt", {newVariable(999)}, {}},
        Fault{"EventOfTheStandardsRange",
              {newEvent(100), sends("100, 101, 1")},
              {"warning reserved-id secs_cusevent 100 evt_id"}},
        Fault{"ReportOfTheStandardsRange",
              {"UPDATE secs_report SET rpt_id = 100 WHERE rpt_id = 107",
               "UPDATE secs_rpt_var SET rpt_id = 100 WHERE rpt_id = 107",
               "UPDATE secs_def_evt_rpt SET rpt_id = 100 WHERE rpt_id = 107"},
              {"warning reserved-id secs_report 100 rpt_id"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Settings, SeededFaultTest,
    ::testing::Values(Fault{"Missing",
                            {"DELETE FROM secs_setting WHERE set_field = 'DeviceID'"},
                            {"warning setting-missing secs_setting DeviceID set_field"}},
                      Fault{
                          "Unknown",
                          {"INSERT INTO secs_setting (set_field, set_value, set_defaultval) VALUES "
                           "('Colour', 'red', 'red')"},
                          {"note setting-unknown secs_setting Colour set_field"}},
                      Fault{"AboveItsRange",
                            {setSetting("set_value = '32768'", "DeviceID")},
                            {"error setting-invalid secs_setting DeviceID set_value"}},
                      Fault{"AtItsBorder", {setSetting("set_value = '32767'", "DeviceID")}, {}},
                      Fault{"BelowItsRange",
                            {setSetting("set_value = '0.09'", "T1Timeout")},
                            {"error setting-invalid secs_setting T1Timeout set_value"}},
                      Fault{"NoAddress",
                            {setSetting("set_defaultval = '1.2.3.256'", "LocalIPAddress")},
                            {"error setting-invalid secs_setting LocalIPAddress set_defaultval"}},
                      Fault{"NoneOfTheChoices",
                            {setSetting("set_value = '1234'", "BaudRate")},
                            {"warning setting-invalid secs_setting BaudRate set_value"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Links, SeededFaultTest,
    ::testing::Values(
        Fault{"OfNoEvent",
              {sends("9999, 101, 1")},
              {"error dangling-event secs_def_evt_rpt 9999 evt_id"}},
        Fault{"ToNoReport",
              {sends("101, 9999, 3")},
              {"error dangling-report secs_def_evt_rpt 101 rpt_id"}},
        Fault{"OfNoReport",
              {carries("9999, 101, 1")},
              {"error dangling-report secs_rpt_var 9999 rpt_id"}},
        Fault{"ToNoVariable",
              {carries("101, 9999, 6")},
              {"error dangling-variable secs_rpt_var 101 var_id"}},
        Fault{"ToNull",
              {carries("101, Null, 6")},
              {"error dangling-variable secs_rpt_var 101 var_id"}},
        Fault{"OfNull",
              {sends("Null, 101, 1")},
              {"error dangling-event secs_def_evt_rpt null evt_id"}},
        Fault{"Doubled",
              {sends("101, 101, 1")},
              {"warning duplicate-link secs_def_evt_rpt 101 rpt_id"}},
        Fault{"DoubledElsewhereIsKept", {sends("101, 101, 3")}, {}},
        Fault{"Gap",
              {"UPDATE secs_def_evt_rpt SET rpt_order = 3 WHERE evt_id = 101 AND rpt_id = 124"},
              {"warning order-gap secs_def_evt_rpt 101 rpt_order"}},
        Fault{"FromZero",
              {"UPDATE secs_rpt_var SET var_order = var_order - 1 WHERE rpt_id = 101"},
              {"warning order-gap secs_rpt_var 101 var_order"}},
        Fault{"NoOrder",
              {"UPDATE secs_def_evt_rpt SET rpt_order = Null WHERE evt_id = 101 AND rpt_id = 124"},
              {"warning order-gap secs_def_evt_rpt 101 rpt_order"}},
        Fault{"EmptyReport",
              {"DELETE FROM secs_rpt_var WHERE rpt_id = 107"},
              {"error empty-report secs_report 107 "}},
        Fault{"NobodySendsIt",
              {"INSERT INTO secs_report (rpt_id, rpt_name, rpt_desc, rpt_default) VALUES (300, "
               "'Added', 'Added.', 0)",
               carries("300, 101, 1")},
              {"note unused-report secs_report 300 "}},
        Fault{"EventWithoutReport", {newEvent(300)}, {"note unreported-event secs_cusevent 300 "}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Lists, SeededFaultTest,
    ::testing::Values(Fault{"Empty",
                            {setVariable("var_parentkey = 0, var_accessid = 0", 222)},
                            {"warning empty-list secs_cusvar 221 "}},
                      Fault{"InItself",
                            {setVariable("var_parentkey = 110, var_accessid = 1", 110)},
                            {"error list-loop secs_cusvar 110 var_parentkey"}},
                      Fault{"InEachOther",
                            {setVariable("var_parentkey = 228, var_accessid = 7", 223),
                             setVariable("var_parentkey = 223, var_accessid = 5", 228)},
                            {"error list-loop secs_cusvar 223 var_parentkey",
                             "error list-loop secs_cusvar 228 var_parentkey"}},
                      Fault{"Orphan",
                            {setVariable("var_parentkey = 9999, var_accessid = 1", 110)},
                            {"error orphan-child secs_cusvar 110 var_parentkey"}},
                      Fault{"OrphanOfNull",
                            {setVariable("var_parentkey = Null", 110)},
                            {"error orphan-child secs_cusvar 110 var_parentkey"}},
                      Fault{"InNoList",
                            {setVariable("var_parentkey = 101, var_accessid = 1", 110)},
                            {"error child-of-no-list secs_cusvar 110 var_parentkey"}},
                      Fault{"GapInPlaces",
                            {setVariable("var_accessid = 9", 227)},
                            {"warning order-gap secs_cusvar 223 var_accessid"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Standard, SeededFaultTest,
    ::testing::Values(
        Fault{"Missing",
              {"DELETE FROM secs_gemvar WHERE var_id = 93"},
              {"note standard-item-missing secs_gemvar 93 var_id"}},
        Fault{"OtherGroup",
              {"UPDATE secs_gemvar SET var_group = 'Other' WHERE var_id = 2"},
              {"note standard-item-differs secs_gemvar 2 var_group"}},
        Fault{"OtherEventName",
              {"UPDATE secs_gemevent SET evt_name = 'Other' WHERE evt_id = 1"},
              {"note standard-item-differs secs_gemevent 1 evt_name"}},
        Fault{"WhatTheUserMayChange",
              {"UPDATE secs_gemvar SET var_val = '3', var_defaultval = '2' WHERE var_id = 2",
               "UPDATE secs_gemevent SET evt_enable = 0 WHERE evt_id = 1"},
              {}}),
    nameOf);

}  // namespace
}  // namespace stelvan::test
