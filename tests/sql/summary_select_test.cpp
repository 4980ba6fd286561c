// Counts and extremes of whole tables: whatever way they are found, the answer is the one that the
// rows give.
#include "sql/summary_select.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <variant>

#include "jet/rows/value_text.h"
#include "sql/dialect.h"
#include "sql/engine.h"
#include "tests/sql/own_table.h"
#include "tests/support/models.h"

namespace stelvan::sql {
namespace {

jet::Value valueOf(Engine& engine, const std::string& sql) {
    return std::get<ComputedRows>(engine.select(sql)).rows.front().front();
}

/// The answer, and the one that every row was read for.
void expectAsTheRowsSay(Engine& engine, const std::string& function, const std::string& table) {
    const std::string sql = "SELECT " + function + " FROM [" + table + "]";
    EXPECT_EQ(valueOf(engine, sql), valueOf(engine, sql + " WHERE 1 = 1")) << sql;
}

class EveryModel : public ::testing::TestWithParam<const char*> {};

TEST_P(EveryModel, CountsAndExtremesOfAllColumnsAreThoseOfTheRows) {
    jet::Database database = jet::Database::open(test::model(GetParam()), jet::Access::ReadOnly);
    Engine engine(database);
    for (const std::string& table : database.tableNames()) {
        expectAsTheRowsSay(engine, "COUNT(*)", table);
        for (const jet::ColumnInfo& column : database.table(table).info().columns) {
            expectAsTheRowsSay(engine, "MAX([" + column.name + "])", table);
            expectAsTheRowsSay(engine, "MIN([" + column.name + "])", table);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Models, EveryModel,
                         ::testing::Values("gem.mdb", "gem_int_flags.mdb", "gem_empty.mdb",
                                           "gem_edges.mdb", "shapes/descending_index.mdb",
                                           "shapes/deleted_columns.mdb", "shapes/overflow.mdb",
                                           "shapes/numeric.mdb"));

TEST(SummarySelect, OfAnIdentifierIsTakenFromItsIndex) {
    jet::Database database =
        jet::Database::open(test::model("gem_large.mdb"), jet::Access::ReadOnly);
    const auto scope = database.beginRead();
    jet::Table& table = database.table("secs_cusvar");
    for (const char* sql :
         {"SELECT MAX(var_id) FROM secs_cusvar", "select min([var_id]) from secs_cusvar",
          "SELECT MAX(v.var_id) FROM secs_cusvar AS v", "SELECT COUNT(*) FROM secs_cusvar"}) {
        EXPECT_TRUE(summaryOf(parseStatement(sql), table).has_value()) << sql;
    }
}

TEST(SummarySelect, IsNoOtherStatement) {
    jet::Database database = jet::Database::open(test::model("gem.mdb"), jet::Access::ReadOnly);
    const auto scope = database.beginRead();
    jet::Table& table = database.table("secs_cusvar");
    for (const char* sql :
         {"SELECT MAX(var_id) FROM secs_cusvar WHERE var_id < 120",
          "SELECT var_id FROM secs_cusvar", "SELECT MAX(var_id) + 1 FROM secs_cusvar",
          "SELECT COUNT(var_id) FROM secs_cusvar",
          "SELECT MAX(var_id), MIN(var_id) FROM secs_cusvar", "SELECT SUM(var_id) FROM secs_cusvar",
          "SELECT MAX(*) FROM secs_cusvar", "SELECT MAX(nothing) FROM secs_cusvar",
          "SELECT COUNT(*) AS n FROM secs_cusvar"}) {
        EXPECT_FALSE(summaryOf(parseStatement(sql), table).has_value()) << sql;
    }
}

TEST(SummarySelect, IsCalledAsAnyExpressionWithoutAName) {
    jet::Database database = jet::Database::open(test::model("gem.mdb"), jet::Access::ReadOnly);
    Engine engine(database);
    const auto found = std::get<ComputedRows>(engine.select("SELECT MAX(var_id) FROM secs_cusvar"));
    EXPECT_EQ(found.columns, std::vector<std::string>{"Expr1000"});
}

TEST(SummarySelect, OfTextsIsInTheOrderOfTheFileAndTheFirstStoredOfEqualOnes) {
    OwnTable table;
    const auto extremes = [&] {
        return jet::textOf(table.values("SELECT MIN(a) FROM t").front()) + " " +
               jet::textOf(table.values("SELECT MAX(a) FROM t").front());
    };
    EXPECT_EQ(extremes(), " ") << "no row, no value";
    for (const char* text : {"'beta'", "Null", "'Zeta'", "'alpha'", "'ALPHA'", "'zeta '"})
        table.execute(std::string("INSERT INTO t (id, a) VALUES (1, ") + text + ")");
    EXPECT_EQ(extremes(), "alpha Zeta");
    table.execute("DELETE FROM t WHERE a = 'alpha' OR a = 'zeta'");
    EXPECT_EQ(extremes(), "beta beta");
    table.execute("DELETE FROM t WHERE a = 'beta'");
    EXPECT_EQ(extremes(), " ") << "only Nulls are left";
}

TEST(SummarySelect, FollowsEveryChange) {
    OwnTable table;
    std::mt19937 random(9);
    const char* const letters[] = {"a", "B", "-", "'' ", "z", " ", "\xC3\x9F", "ss", "\xC3\xA9"};
    for (int step = 0; step < 300; ++step) {
        std::string text;
        for (std::size_t i = random() % 4 + 1; i-- > 0;) text += letters[random() % 9];
        table.execute(
            random() % 3 == 0
                ? "DELETE FROM t WHERE a > '" + text + "' AND id < " + std::to_string(step)
                : "INSERT INTO t (id, a) VALUES (" + std::to_string(step) + ", '" + text + "')");
        for (const char* function : {"MAX(a)", "MIN(a)", "COUNT(*)"}) {
            const std::string sql = std::string("SELECT ") + function + " FROM t";
            ASSERT_EQ(table.values(sql), table.values(sql + " WHERE 1 = 1"))
                << sql << ", step " << step;
        }
    }
}

}  // namespace
}  // namespace stelvan::sql
