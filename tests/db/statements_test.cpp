// Every statement that the program composes, as it composes it, on files of every make.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;

struct Counted {
    const char* sql;
    std::size_t rows;  // in the model, whichever make of file holds it
};

class Statements : public testing::TestWithParam<stelvan::test::ModelFile> {
protected:
    void SetUp() override { file_ = std::make_unique<GemFile>(GetParam().path()); }
    const GemFile& file() { return *file_; }

private:
    std::unique_ptr<GemFile> file_;
};

TEST_P(Statements, CategoryQueriesYieldTheirRecordsInStoredOrder) {
    constexpr const char* kWithoutCondition[] = {
        "select * from secs_gemevent", "select * from secs_alarm", "select * from secs_cusevent",
        "select * from secs_setting", "select * from secs_report"};
    constexpr std::size_t kRows[] = {25, 90, 70, 31, 60};
    for (std::size_t at = 0; at < std::size(kRows); ++at) {
        EXPECT_EQ(file().records(kWithoutCondition[at])->recordCount(), kRows[at])
            << kWithoutCondition[at];
    }
    std::int32_t gem = 0;
    std::int32_t custom = 0;
    for (const std::string type : {"DV", "SV", "EC"}) {
        const auto gemRows =
            file().column("select * from secs_gemvar where var_type = '" + type + "'");
        const auto rows =
            file().records("select * from secs_cusvar where var_type = '" + type + "'");
        gem += static_cast<std::int32_t>(gemRows.size());
        custom += rows->recordCount();
        for (; !rows->eof(); rows->moveNext()) EXPECT_EQ(toText(rows->field("VAR_TYPE")), type);
    }
    EXPECT_EQ(gem, 42);
    EXPECT_EQ(custom, 300);
}

TEST_P(Statements, ChildrenOfAListComeByPosition) {
    const auto rows = file().rows(
        "SELECT var_name, var_id, var_group, var_val, var_allowduplicates FROM secs_cusvar WHERE "
        "var_parentkey = "
        "227 ORDER BY var_accessid ");
    ASSERT_GT(rows.size(), 1U);
    const auto positions = file().column(
        "SELECT var_accessid FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY var_accessid");
    for (std::size_t at = 0; at < positions.size(); ++at)
        EXPECT_EQ(positions[at], std::to_string(at + 1));
}

TEST_P(Statements, ChildPoolOffersNeitherItselfNorListsNorOwnedVariables) {
    const std::string pool = std::string("SELECT var_name, var_id, var_group, var_val ") +
                             "FROM secs_cusvar " + "WHERE var_id <> " + "101" +
                             " AND var_type = '" + "SV" + "' " + " AND var_format <> 'L' " +
                             " AND var_parentkey = 0 ";
    const auto rows = file().rows(pool);
    ASSERT_FALSE(rows.empty());
    for (const auto& row : rows) {
        EXPECT_NE(row[1], "101");
        EXPECT_NE(row[1], "244");  // its format is "l": a list, too
        EXPECT_EQ(file().column("SELECT var_type FROM secs_cusvar WHERE var_id = " + row[1]),
                  std::vector<std::string>{"SV"});
    }
}

TEST_P(Statements, TopLevelVariablesOfBothTables) {
    const auto gem =
        file().rows("select var_name, var_id, var_type FROM secs_gemvar WHERE var_parentkey = 0");
    const auto custom =
        file().rows("select var_name, var_id, var_type FROM secs_cusvar WHERE var_parentkey = 0");
    EXPECT_GT(gem.size(), 30U);
    EXPECT_GT(custom.size(), 200U);
}

TEST_P(Statements, ReportsOfAnEventComeInTheirOrder) {
    const auto rows =
        file().rows(std::string("SELECT rpt.rpt_name, rpt.rpt_id, evt.rpt_order ") + "FROM " +
                    "secs_def_evt_rpt" + " evt, secs_report rpt " + "WHERE evt.evt_id = " + "162" +
                    " AND evt.rpt_id = rpt.rpt_id " + " ORDER BY evt.rpt_order ");
    ASSERT_EQ(rows.size(), 12U);
    for (std::size_t at = 0; at < rows.size(); ++at) EXPECT_EQ(rows[at][2], std::to_string(at + 1));
    EXPECT_EQ(file().column("SELECT rpt_name, rpt_id FROM secs_report").size(), 60U);
}

TEST_P(Statements, VariablesOfAReportFromBothTables) {
    const auto variables = [this](const std::string& table) {
        return file().rows(
            std::string("SELECT var.var_name, var.var_id, var.var_type, rpt.var_order ") +
            "FROM secs_rpt_var rpt, " + table + " var " + "WHERE rpt.rpt_id = " + "126" +
            " AND rpt.var_id = var.var_id " + "ORDER BY rpt.var_order ");
    };
    const auto gem = variables("secs_gemvar");
    const auto custom = variables("secs_cusvar");
    EXPECT_EQ(gem.size() + custom.size(), 14U);
    std::vector<int> orders;
    for (const auto& rows : {gem, custom}) {
        for (const auto& row : rows) orders.push_back(std::stoi(row[3]));
    }
    EXPECT_TRUE(
        std::is_sorted(orders.begin(), orders.begin() + static_cast<std::ptrdiff_t>(gem.size())));
    std::sort(orders.begin(), orders.end());
    for (std::size_t at = 0; at < orders.size(); ++at)
        EXPECT_EQ(orders[at], static_cast<int>(at) + 1);
}

TEST_P(Statements, LinkRowsOfAnEventAndOfAReport) {
    EXPECT_EQ(file()
                  .rows(std::string("SELECT * FROM secs_def_evt_rpt ") + "WHERE evt_id = " + "162")
                  .size(),
              12U);
    EXPECT_EQ(
        file().rows(std::string("SELECT * FROM secs_rpt_var ") + "WHERE rpt_id = " + "126").size(),
        14U);
}

TEST_P(Statements, GenericTextsOfTheOperations) {
    EXPECT_EQ(file().column("SELECT var_id FROM secs_cusvar").size(), 300U);
    EXPECT_EQ(file().column("SELECT MAX(var_id) FROM secs_cusvar"),
              std::vector<std::string>{"2080"});
    EXPECT_EQ(file().column("SELECT var_id FROM secs_cusvar WHERE var_id = 101").size(), 1U);
    EXPECT_EQ(file().column("SELECT MAX(var_id) FROM secs_cusvar WHERE var_id = 999999"),
              std::vector<std::string>{"<null>"});
}

TEST_P(Statements, ATableNameAloneOpensTheTable) {
    EXPECT_EQ(file().records("secs_cusvar")->recordCount(), 300);
}

TEST_P(Statements, TextComparesWithoutRegardToCase) {
    const std::string name =
        file().column("SELECT var_name FROM secs_cusvar WHERE var_id = 101").front();
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    EXPECT_EQ(file().column("SELECT var_name FROM secs_cusvar WHERE var_name = '" + upper + "'"),
              std::vector<std::string>{name});
}

TEST_P(Statements, FlagsCompareAsTheWordsTrueAndFalse) {
    const auto all = file().column("SELECT evt_id FROM secs_cusevent").size();
    const auto clear =
        file().column("SELECT evt_id FROM secs_cusevent WHERE evt_enable = False").size();
    const auto set = file().column("SELECT evt_id FROM secs_cusevent WHERE evt_enable <> 0").size();
    EXPECT_GT(set, 0U);
    EXPECT_GT(clear, 0U);
    EXPECT_LE(clear + set, all);
}

TEST_P(Statements, WhatTheProviderRefusesHasItsNumber) {
    const auto number = [this](const std::string& sql) {
        return failureOf([&] { (void)file().rows(sql); }).number();
    };
    EXPECT_EQ(number("SELECT evt_name FROM secs_cusevent WHERE evt_name = ABC"), -2147217904);
    EXPECT_EQ(number("SELECT evt_name FROM secs_cusevent WHERE evt_name = 12"), -2147217913);
    EXPECT_EQ(number("SELECT evt_id FROM secs_cusevent WHERE evt_id = '101'"), -2147217913);
    EXPECT_EQ(number("SELECT evt_name FROM secs_cusevent WHERE evt_name = 'it's'"), -2147217900);
    EXPECT_EQ(number("SELECT evt_name FROM secs_cusevent WHERE evt_name = \"ABC\""), -2147217904);
    EXPECT_EQ(number("SELECT evt_id FROM secs_cusevent WHERE evt_id = "), -2147217900);
    EXPECT_EQ(number("SELECT evt_id FROM no_such_table"), -2147217865);
    EXPECT_EQ(number("SELECT evt_id FROM sqlite_master"), -2147217865);
    EXPECT_EQ(number("PRAGMA table_info(secs_cusevent)"), -2147217900);
}

INSTANTIATE_TEST_SUITE_P(EveryMake, Statements, testing::ValuesIn(test::everyLayout()),
                         [](const auto& file) { return stelvan::test::label(file.param); });

}  // namespace
}  // namespace stelvan::db
