// The text forms of schema and rows: what they say is taken as said, what they say wrongly is
// refused.
#include <gtest/gtest.h>

#include <fstream>

#include "data/builder/generated_model.h"
#include "data/builder/schema_text.h"
#include "data/builder/table_text.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

std::string refusal(const std::string& schema) {
    try {
        (void)data::parseSchema(schema);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(SchemaText, GivesColumnsWithTypesSizesAndDefaults) {
    const data::Schema schema = data::parseSchema(
        "created 2025-01-01T12:00:00\n"
        "table one two   # of the same shape\n"
        "column id Long default 7\n"
        "column name Text 100\n"
        "column text Memo\n"
        "primary PrimaryKey id\n"
        "index both name id\n");
    EXPECT_EQ(schema.created.days, 45658.5);
    ASSERT_EQ(schema.tables.size(), 2U);
    const jet::TableSpec& two = schema.tables[1];
    EXPECT_EQ(two.name, "two");
    EXPECT_EQ(two.columns[0].defaultValue, "7");
    EXPECT_EQ(two.columns[1].length, 200);
    EXPECT_TRUE(two.columns[1].compressed);
    EXPECT_EQ(two.columns[2].type, jet::ColumnType::Memo);
    EXPECT_TRUE(two.indexes[0].primary && two.indexes[0].unique && two.indexes[0].required);
    EXPECT_FALSE(two.indexes[1].unique);
    EXPECT_EQ(two.indexes[1].columns[1].column, 0U);
}

TEST(SchemaText, GivesTraitsDescendingIndexesAndRelationships) {
    const data::Schema schema = data::parseSchema(
        "table parent\ncolumn id Long auto\nprimary PrimaryKey id\n"
        "table child\ncolumn id Long\ncolumn price Decimal 9 2\n"
        "column note Text 20 default none uncompressed nonempty\nindex back -id note\n"
        "relationship family parent id child id deletes\n");
    EXPECT_TRUE(schema.tables[0].columns[0].autoNumber);
    const jet::TableSpec& child = schema.tables[1];
    EXPECT_EQ(child.columns[1].precision, 9);
    EXPECT_EQ(child.columns[1].scale, 2);
    EXPECT_EQ(child.columns[2].defaultValue, "none");
    EXPECT_FALSE(child.columns[2].compressed || child.columns[2].allowZeroLength);
    EXPECT_FALSE(child.indexes[0].columns[0].ascending);
    EXPECT_TRUE(child.indexes[0].columns[1].ascending);
    const jet::RelationshipInfo& family = schema.relationships.at(0);
    EXPECT_EQ(family.parentTable + "." + family.parentColumns.at(0), "parent.id");
    EXPECT_EQ(family.childTable + "." + family.childColumns.at(0), "child.id");
    EXPECT_TRUE(family.enforced && family.cascadeDeletes && !family.cascadeUpdates);
}

TEST(SchemaText, RefusesWhatItDoesNotKnowAndNamesTheLine) {
    EXPECT_EQ(refusal("\ncolumn id Long"), "schema, line 2: a table must begin first");
    EXPECT_EQ(refusal("table t\ncolumn id Lang"), "schema, line 2: no such type: Lang");
    EXPECT_EQ(refusal("table t\nindex i id"), "schema, line 2: no such column: id");
    EXPECT_EQ(refusal("table t\ncolumn id Long sparse"),
              "schema, line 2: no such trait of a column: sparse");
    EXPECT_EQ(refusal("relationship r a x b y inserts"),
              "schema, line 1: nothing else cascades: inserts");
    EXPECT_EQ(refusal("table t\nfrobnicate"), "schema, line 2: no such word: frobnicate");
    EXPECT_NE(refusal("created yesterday"), "");
    EXPECT_NE(refusal("table t\ncolumn name Text"), "") << "a text needs a size";
}

TEST(ShippedSchema, HasTheNineTablesAndTheLimits) {
    const auto schema = data::parseSchema(data::readText(STELVAN_SOURCE_DIR "/data/schema.txt"));
    std::vector<std::string> names;
    for (const jet::TableSpec& table : schema.tables) names.push_back(table.name);
    EXPECT_EQ(names,
              (std::vector<std::string>{
                  "secs_gemvar", "secs_cusvar", "secs_gemevent", "secs_cusevent", "secs_alarm",
                  "secs_report", "secs_def_evt_rpt", "secs_rpt_var", "secs_setting", "var_limit"}));
}

TEST(TableText, GivesCellsAndReplacesWords) {
    const ScratchDir folder;
    std::ofstream(folder.path() / "b.tsv") << "id\tpath\n1\t@DIR@/x@DIR@\n2\t\n";
    std::ofstream(folder.path() / "a.tsv") << "id\n";
    std::ofstream(folder.path() / "notes.txt") << "no table";
    const auto tables = data::readTables(folder.path(), {{"@DIR@", "/d"}});
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0].table, "a");
    EXPECT_TRUE(tables[0].rows.empty());
    EXPECT_EQ(tables[1].rows, (std::vector<data::Cells>{{"1", "/d/x/d"}, {"2", ""}}));
}

TEST(TableText, TellsNullFromAnEmptyTextAndKeepsTabsAndLines) {
    const ScratchDir folder;
    std::ofstream(folder.path() / "a.tsv") << "x\ty\n\\N\t\n\\ta\\r\\nb\tC:\\\\N\n";
    EXPECT_EQ(data::readTables(folder.path())[0].rows,
              (std::vector<data::Cells>{{std::nullopt, ""}, {"\ta\r\nb", "C:\\N"}}));
}

TEST(TableText, RefusesASignThatStandsForNothing) {
    const ScratchDir folder;
    std::ofstream(folder.path() / "a.tsv") << "x\nC:\\dir\n";
    EXPECT_THROW((void)data::readTables(folder.path()), std::runtime_error);
}

TEST(TableText, RefusesALineWithTooFewCells) {
    const ScratchDir folder;
    std::ofstream(folder.path() / "a.tsv") << "id\tname\n1\tx\n2\n";
    try {
        (void)data::readTables(folder.path());
        FAIL() << "not refused";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("line 3"), std::string::npos) << error.what();
    }
}

TEST(GeneratedModel, HasTheSizesAskedForAndIsTheSameEachTime) {
    const data::ModelSize size{.variables = 25, .events = 4, .alarms = 3, .reports = 6};
    const auto tables = data::generateModel(size);
    std::map<std::string, std::size_t> rows;
    for (const data::TableRows& table : tables) rows[table.table] = table.rows.size();
    EXPECT_EQ(rows["secs_cusvar"], 25U);
    EXPECT_EQ(rows["secs_cusevent"], 4U);
    EXPECT_EQ(rows["secs_alarm"], 3U);
    EXPECT_EQ(rows["secs_report"], 6U);
    EXPECT_EQ(rows["secs_rpt_var"], 30U);
    EXPECT_EQ(rows["secs_def_evt_rpt"], 8U);
    EXPECT_EQ(data::generateModel(size)[0].rows, tables[0].rows);
    EXPECT_EQ(data::generateVariables(10, 5).rows[0], tables[0].rows[10]);
}

}  // namespace
}  // namespace stelvan::test
