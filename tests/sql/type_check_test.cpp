#include "sql/type_check.h"

#include <gtest/gtest.h>

#include "sql/error.h"
#include "sql/single_table.h"

namespace stelvan::sql {
namespace {

jet::TableInfo tableOf(std::vector<std::pair<std::string, jet::ColumnType>> columns) {
    jet::TableInfo table;
    table.name = "t";
    for (auto& [name, type] : columns) {
        jet::ColumnInfo& column = table.columns.emplace_back();
        column.name = name;
        column.type = type;
    }
    return table;
}

const jet::TableInfo kTable = tableOf({{"id", jet::ColumnType::Long},
                                       {"name", jet::ColumnType::Text},
                                       {"flag", jet::ColumnType::Boolean},
                                       {"note", jet::ColumnType::Memo}});

bool isRefused(const std::string& condition) {
    const Statement statement = parseStatement(condition);
    try {
        checkComparisons(statement.tokens, {{"t", &kTable}});
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::TypeMismatch);
        EXPECT_STREQ(error.what(), "Data type mismatch in criteria expression.");
        return true;
    }
    return false;
}

TEST(TypeCheck, ANumberIsNotComparedWithText) {
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE id = '1'"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE t.id <> '1'"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE '1' < id"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE name = -12"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE flag = 'True'"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE note = True"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE id = name"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE id IN (1, '2')"));
    EXPECT_TRUE(isRefused("SELECT id FROM t WHERE name NOT BETWEEN 'a' AND 5"));
    EXPECT_TRUE(isRefused("DELETE FROM t WHERE id = '1'"));
}

TEST(TypeCheck, EqualNaturesAndWhatIsNotKnownPass) {
    EXPECT_FALSE(
        isRefused("SELECT id FROM t WHERE id = 1 AND name = 'x' AND flag = True AND note <> 'y'"));
    EXPECT_FALSE(isRefused("SELECT id FROM t WHERE flag = 0 AND id = -1 AND id BETWEEN 1 AND 2"));
    EXPECT_FALSE(isRefused("SELECT id FROM t WHERE upper(name) = 'X' AND id + 1 = 2"));
    EXPECT_FALSE(isRefused("SELECT id FROM t WHERE other = '1'"));
    EXPECT_FALSE(isRefused("SELECT id FROM t WHERE id IN (SELECT id FROM t)"));
}

TEST(TypeCheck, AnAssignmentIsNoComparison) {
    EXPECT_FALSE(isRefused("UPDATE t SET id = '1', name = 5 WHERE id = 2"));
    EXPECT_TRUE(isRefused("UPDATE t SET id = 1 WHERE id = '2'"));
}

TEST(SingleTable, SelectsOfOneTableAreRecognised) {
    const auto columns = [](const std::string& sql) -> std::vector<std::size_t> {
        const auto select = asSingleTable(parseStatement(sql), kTable);
        return select ? select->columns : std::vector<std::size_t>{};
    };
    using Positions = std::vector<std::size_t>;
    EXPECT_EQ(columns("select * from t"), (Positions{0, 1, 2, 3}));
    EXPECT_EQ(columns("select * from t where name = 'x'"), (Positions{0, 1, 2, 3}));
    EXPECT_EQ(columns("SELECT NAME, t.id FROM t ORDER BY id"), (Positions{1, 0}));
    EXPECT_EQ(columns("SELECT x.name FROM t x"), (Positions{1}));
    EXPECT_EQ(columns("SELECT MAX(id) FROM t"), Positions{});
    EXPECT_EQ(columns("SELECT DISTINCT name FROM t"), Positions{});
    EXPECT_EQ(columns("SELECT name FROM t GROUP BY name"), Positions{});
    EXPECT_EQ(columns("SELECT name FROM t, t u"), Positions{});
    EXPECT_EQ(columns("SELECT name AS other FROM t"), Positions{});
    EXPECT_EQ(columns("SELECT unknown FROM t"), Positions{});
    EXPECT_EQ(columns("SELECT id FROM t WHERE id IN (SELECT id FROM t)"), Positions{});
}

TEST(SingleTable, ItIsKnownWhetherEveryRowIsMeantAndInWhichOrder) {
    EXPECT_TRUE(asSingleTable(parseStatement("SELECT id FROM t"), kTable)->everyRow);
    EXPECT_TRUE(asSingleTable(parseStatement("SELECT id FROM t AS x"), kTable)->everyRow);
    EXPECT_FALSE(asSingleTable(parseStatement("SELECT id FROM t WHERE t"), kTable)->everyRow);
    const auto ordered = asSingleTable(parseStatement("SELECT id FROM t ORDER BY name"), kTable);
    EXPECT_FALSE(ordered->everyRow);
    EXPECT_TRUE(ordered->ordered);
}

TEST(SingleTable, ThePlacesAreSelectedInsteadOfTheColumns) {
    const Statement statement = parseStatement("SELECT id, name FROM t x WHERE x.id = 1");
    const auto select = asSingleTable(statement, kTable);
    EXPECT_EQ(translate(selectingPlaces(statement, *select)).text,
              "SELECT \"_rowid_\" FROM \"t\" \"x\" WHERE \"x\" . \"id\" = 1");
}

}  // namespace
}  // namespace stelvan::sql
