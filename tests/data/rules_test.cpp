// Every value of the shipped models obeys the rules that the program keeps for what a user types.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>

#include "data/builder/generated_model.h"
#include "gem/formats.h"
#include "gem/ids_and_names.h"
#include "gem/settings.h"
#include "tests/data/model_texts.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace rules = stelvan::gem;

struct ShippedModel {
    const char* name;
    std::vector<std::string> folders;
    data::ModelSize generated;
};

ModelTexts textsOf(const ShippedModel& shipped) {
    ModelTexts texts(shipped.folders);
    for (const data::TableRows& table : data::generateModel(shipped.generated)) texts.append(table);
    return texts;
}

class ShippedModelTest : public ::testing::TestWithParam<ShippedModel> {
protected:
    const ModelTexts texts_ = textsOf(GetParam());
    const std::vector<Row> variables_ = texts_.rowsOf({"secs_gemvar", "secs_cusvar"});
    const std::vector<Row> events_ = texts_.rowsOf({"secs_gemevent", "secs_cusevent"});
};

std::string upper(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// As the window shows it: the placeholder for nothing is blank.
std::string shown(const std::string& cell) {
    return cell == "NULL" ? "" : cell;
}

bool hasRange(const Row& variable) {
    return variable.at("var_min") != "0" || variable.at("var_max") != "0";
}

/// The column's values are all different, letter case ignored.
void expectUnique(const std::vector<Row>& rows, const std::string& column) {
    std::set<std::string> seen;
    for (const Row& row : rows)
        EXPECT_TRUE(seen.insert(upper(row.at(column))).second) << row.at(column);
}

/// The rows of each owner are numbered 1 to n in the order in which they stand.
void expectOrders(const std::vector<Row>& links, const std::string& owner,
                  const std::string& order) {
    std::map<std::string, int> last;
    for (const Row& link : links)
        EXPECT_EQ(std::stoi(link.at(order)), ++last[link.at(owner)]) << link.at(owner);
}

std::set<std::string> valuesOf(const std::vector<Row>& rows, const std::string& column) {
    std::set<std::string> values;
    for (const Row& row : rows) values.insert(row.at(column));
    return values;
}

TEST_P(ShippedModelTest, ValuesObeyTheirFormat) {
    ASSERT_FALSE(variables_.empty());
    for (const Row& variable : variables_) {
        const std::string format = variable.at("var_format");
        SCOPED_TRACE(variable.at("var_name") + " " + format);
        ASSERT_TRUE(rules::valueKindOf(format) != rules::ValueKind::None || format == "L");
        for (const char* column : {"var_min", "var_max", "var_defaultval", "var_val"}) {
            if (const auto fault = rules::checkValue(shown(variable.at(column)), format)) {
                EXPECT_EQ(*fault, gem::NO_EXCEPTION) << column;
            }
        }
    }
}

TEST_P(ShippedModelTest, ValuesLieWithinTheirLimits) {
    for (const Row& variable : variables_) {
        const std::string format = variable.at("var_format");
        const std::string min = shown(variable.at("var_min"));
        const std::string max = shown(variable.at("var_max"));
        SCOPED_TRACE(variable.at("var_name"));
        if (min.empty() || !hasRange(variable)) continue;
        EXPECT_FALSE(rules::minAboveMax(min, max, format));
        for (const char* column : {"var_defaultval", "var_val"}) {
            EXPECT_FALSE(rules::outsideLimits(shown(variable.at(column)), min, max)) << column;
        }
    }
}

TEST_P(ShippedModelTest, FieldsThatAFormatClosesHoldPlaceholders) {
    for (const Row& variable : variables_) {
        const std::string format = variable.at("var_format");
        SCOPED_TRACE(variable.at("var_name"));
        if (!rules::isNumericFormat(format)) {
            EXPECT_EQ(variable.at("var_min"), "NULL");
            EXPECT_EQ(variable.at("var_max"), "NULL");
        }
        if (format == "A" || format == "B" || format == "BL" || format == "L") {
            EXPECT_EQ(variable.at("var_unit"), "NULL");
        }
        if (format == "L") {
            EXPECT_EQ(variable.at("var_val"), "NULL");
        }
        if (format == "BL") {
            EXPECT_EQ(variable.at("var_defaultval"), upper(variable.at("var_defaultval")));
        }
    }
}

TEST_P(ShippedModelTest, NamesGroupsAndTextsAreSound) {
    struct Kind {
        std::vector<std::string> tables;
        std::string name, group, text;
    };
    const std::vector<Kind> kinds = {
        {{"secs_gemvar", "secs_cusvar"}, "var_name", "var_group", "var_desc"},
        {{"secs_gemevent", "secs_cusevent"}, "evt_name", "evt_group", "evt_text"},
        {{"secs_alarm"}, "alm_name", "alm_group", "alm_text"},
        {{"secs_report"}, "rpt_name", "", "rpt_desc"}};
    for (const Kind& kind : kinds) {
        for (const Row& row : texts_.rowsOf(kind.tables)) {
            const std::string& name = row.at(kind.name);
            SCOPED_TRACE(name);
            EXPECT_EQ(rules::checkName(name), gem::NO_EXCEPTION);
            EXPECT_LE(name.size(), 100U);
            if (!kind.group.empty()) {
                EXPECT_EQ(rules::checkGroup(row.at(kind.group)), gem::NO_EXCEPTION);
            }
            EXPECT_EQ(rules::checkText(row.at(kind.text)), gem::NO_EXCEPTION);
            EXPECT_LE(row.at(kind.text).size(), 1000U);
        }
    }
}

TEST_P(ShippedModelTest, TextsHoldNoQuotes) {
    for (const auto& [table, rows] : texts_.tables()) {
        for (const Row& row : rows) {
            for (const auto& [column, cell] : row) {
                EXPECT_EQ(cell.find_first_of("'\""), std::string::npos) << table << " " << cell;
            }
        }
    }
}

TEST_P(ShippedModelTest, CustomIdentifiersPassTheRulesAndStandardOnesLieBelowThem) {
    const auto expectPass = [&](const char* table, const char* column,
                                const rules::RecordRules& kind) {
        for (const Row& row : texts_.rows(table)) {
            EXPECT_EQ(rules::checkId(row.at(column), kind), gem::NO_EXCEPTION)
                << table << " " << row.at(column);
        }
    };
    expectPass("secs_cusvar", "var_id", rules::kVariableRules);
    expectPass("secs_cusevent", "evt_id", rules::kEventRules);
    expectPass("secs_alarm", "alm_id", rules::kAlarmRules);
    for (const Row& row : texts_.rows("secs_gemvar")) EXPECT_LE(std::stoi(row.at("var_id")), 100);
    for (const Row& row : texts_.rows("secs_gemevent")) EXPECT_LE(std::stoi(row.at("evt_id")), 100);
}

TEST_P(ShippedModelTest, IdentifiersAndNamesOccurOnce) {
    expectUnique(variables_, "var_id");
    expectUnique(variables_, "var_name");
    expectUnique(events_, "evt_id");
    expectUnique(events_, "evt_name");
    expectUnique(texts_.rows("secs_alarm"), "alm_id");
    expectUnique(texts_.rows("secs_alarm"), "alm_name");
    expectUnique(texts_.rows("secs_report"), "rpt_id");
    expectUnique(texts_.rows("secs_report"), "rpt_name");
}

TEST_P(ShippedModelTest, AlarmsNameEventsThatExist) {
    std::map<std::string, std::string> names;
    for (const Row& event : events_) names[event.at("evt_id")] = event.at("evt_name");
    for (const Row& alarm : texts_.rows("secs_alarm")) {
        SCOPED_TRACE(alarm.at("alm_name"));
        for (const std::string side : {"alm_set_ce", "alm_clr_ce"}) {
            EXPECT_EQ(rules::checkCeid(alarm.at(side + "id")), gem::NO_EXCEPTION);
            EXPECT_EQ(rules::checkCeName(alarm.at(side + "name")), gem::NO_EXCEPTION);
            EXPECT_EQ(names[alarm.at(side + "id")], alarm.at(side + "name"));
        }
        EXPECT_FALSE(rules::samePair(alarm.at("alm_set_ceid"), alarm.at("alm_clr_ceid")));
    }
}

TEST_P(ShippedModelTest, LinksLeadSomewhereAndCountFromOne) {
    const auto variables = valuesOf(variables_, "var_id");
    const auto events = valuesOf(events_, "evt_id");
    const auto reports = valuesOf(texts_.rows("secs_report"), "rpt_id");
    for (const Row& link : texts_.rows("secs_rpt_var")) {
        EXPECT_TRUE(reports.contains(link.at("rpt_id"))) << link.at("rpt_id");
        EXPECT_TRUE(variables.contains(link.at("var_id"))) << link.at("var_id");
    }
    for (const Row& link : texts_.rows("secs_def_evt_rpt")) {
        EXPECT_TRUE(events.contains(link.at("evt_id"))) << link.at("evt_id");
        EXPECT_TRUE(reports.contains(link.at("rpt_id"))) << link.at("rpt_id");
    }
    expectOrders(texts_.rows("secs_rpt_var"), "rpt_id", "var_order");
    expectOrders(texts_.rows("secs_def_evt_rpt"), "evt_id", "rpt_order");
}

TEST_P(ShippedModelTest, EveryReportCarriesVariables) {
    const auto filled = valuesOf(texts_.rows("secs_rpt_var"), "rpt_id");
    for (const Row& report : texts_.rows("secs_report")) {
        EXPECT_TRUE(filled.contains(report.at("rpt_id"))) << report.at("rpt_name");
    }
}

TEST_P(ShippedModelTest, ChildItemsBelongToListsOfTheirType) {
    std::map<std::string, Row> byId;
    for (const Row& variable : variables_) byId[variable.at("var_id")] = variable;
    std::vector<Row> children;
    std::map<std::string, int> count;
    for (const Row& variable : variables_) {
        if (variable.at("var_parentkey") == "0") continue;
        children.push_back(variable);
        ++count[variable.at("var_parentkey")];
    }
    ASSERT_FALSE(children.empty());
    expectOrders(children, "var_parentkey", "var_accessid");
    for (const Row& child : children) {
        SCOPED_TRACE(child.at("var_name"));
        const Row& parent = byId[child.at("var_parentkey")];
        EXPECT_EQ(parent.at("var_format"), "L");
        EXPECT_NE(child.at("var_format"), "L");
        EXPECT_EQ(parent.at("var_type"), child.at("var_type"));
        if (child.at("var_allowduplicates") == "1") {
            EXPECT_EQ(count[child.at("var_parentkey")], 1);
        }
    }
}

TEST_P(ShippedModelTest, NoListVariableStandsFirstInItsCategory) {
    std::set<std::string> seen;
    for (const Row& variable : texts_.rows("secs_gemvar")) {
        if (seen.insert(variable.at("var_type")).second) {
            EXPECT_NE(variable.at("var_format"), "L");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Models, ShippedModelTest,
    ::testing::Values(ShippedModel{"Standard", {"standard"}, {}},
                      ShippedModel{"Demo", {"standard", "demo"}, {}},
                      ShippedModel{"Generated",
                                   {"standard"},
                                   {.variables = 500, .events = 40, .alarms = 30, .reports = 50}}),
    [](const auto& model) { return std::string(model.param.name); });

TEST(ShippedSettings, AreAllThereOnceAndPassTheirRules) {
    const ScratchDir folder;
    const std::string dir = folder.path().string();
    std::filesystem::create_directory(folder.path() / "log");
    for (const char* file : {"/gem.mdb", "/secs-dictionary.xml", "/log/secs.log"})
        std::ofstream(dir + file);
    const ModelTexts texts({"standard"}, {{"@SHARE_DIR@", dir}, {"@STATE_DIR@", dir}});

    const std::vector<Row>& rows = texts.rows("secs_setting");
    expectUnique(rows, "set_field");
    EXPECT_EQ(rows.size(), gem::settingRules().size());
    for (const Row& row : rows) {
        const std::string& name = row.at("set_field");
        EXPECT_NE(gem::ruleFor(name), nullptr) << name;
        EXPECT_EQ(gem::checkSetting(name, row.at("set_value")), "0") << name;
        EXPECT_EQ(gem::checkSetting(name, row.at("set_defaultval")), "0") << name;
    }
}

TEST(StandardItems, CustomTablesShipEmptySoThatTheFirstIdentifierIs101) {
    const ModelTexts texts({"standard"});
    EXPECT_TRUE(texts.rows("secs_cusvar").empty());
    EXPECT_TRUE(texts.rows("secs_cusevent").empty());
    EXPECT_TRUE(texts.rows("secs_alarm").empty());
    for (const Row& report : texts.rows("secs_report"))
        EXPECT_LE(std::stoi(report.at("rpt_id")), 100);
}

}  // namespace
}  // namespace stelvan::test
