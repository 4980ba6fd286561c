#include "sql/dialect.h"

#include <gtest/gtest.h>

#include "sql/error.h"

namespace stelvan::sql {
namespace {

std::string translated(const std::string& sql) {
    return translate(parseStatement(sql).tokens).text;
}

Error refusal(const std::string& sql) {
    try {
        (void)parseStatement(sql);
    } catch (const Error& error) {
        return error;
    }
    return {ErrorKind::Engine, "not refused"};
}

TEST(Dialect, TrueAndFalseAreMinusOneAndZero) {
    EXPECT_EQ(translated("UPDATE t SET f=True WHERE g = FALSE"),
              "UPDATE \"t\" SET \"f\" = (-1) WHERE \"g\" = (0)");
    EXPECT_EQ(translated("SELECT t.True FROM t"), "SELECT \"t\" . \"True\" FROM \"t\"");
}

TEST(Dialect, NamesInBracketsAndQuotesAreNames) {
    EXPECT_EQ(translated("SELECT [a b], \"c\" FROM [Table]"),
              "SELECT \"a b\" , \"c\" FROM \"Table\"");
}

TEST(Dialect, WordsThatAreKeywordsToSqliteAloneAreNames) {
    EXPECT_EQ(translated("SELECT key, MAX(limit) FROM replace"),
              "SELECT \"key\" , \"MAX\" ( \"limit\" ) FROM \"replace\"");
}

TEST(Dialect, DeleteMayNameAStar) {
    EXPECT_EQ(translated("Delete * FROM t"), "Delete FROM \"t\"");
}

TEST(Dialect, ANameAloneIsASelectOfTheTable) {
    EXPECT_EQ(translated("secs_cusvar"), "SELECT * FROM \"secs_cusvar\"");
}

TEST(Dialect, TwoMinusSignsAreNoComment) {
    EXPECT_EQ(translated("SELECT a FROM t WHERE b=1--2"),
              "SELECT \"a\" FROM \"t\" WHERE \"b\" = 1 - - 2");
}

TEST(Dialect, TextKeepsItsDoubledQuotes) {
    EXPECT_EQ(translated("SELECT a FROM t WHERE b='it''s'"),
              "SELECT \"a\" FROM \"t\" WHERE \"b\" = 'it''s'");
}

TEST(Dialect, AnUnbalancedQuoteIsASyntaxErrorInString) {
    const Error error = refusal("SELECT n FROM t WHERE n = 'it's'");
    EXPECT_EQ(error.kind(), ErrorKind::Syntax);
    EXPECT_STREQ(error.what(), "Syntax error in string in query expression 'n = 'it's''.");
}

TEST(Dialect, OnlyFourKindsOfStatements) {
    for (const char* sql : {"", "PRAGMA x", "CREATE TABLE t(a)", "WITH x AS (SELECT 1) SELECT 1",
                            "BEGIN WORK", ";"}) {
        EXPECT_EQ(refusal(sql).kind(), ErrorKind::NotAStatement) << sql;
    }
    EXPECT_EQ(refusal("INSERT OR REPLACE INTO t VALUES (1)").kind(), ErrorKind::Syntax);
}

TEST(Dialect, OneStatementAtATime) {
    EXPECT_EQ(translated("SELECT a FROM t; "), translated("SELECT a FROM t"));
    EXPECT_STREQ(refusal("SELECT a FROM t; DELETE FROM t").what(),
                 "Characters found after end of SQL statement.");
}

TEST(Dialect, TablesAreFoundWithTheirAliases) {
    const auto tables = [](const std::string& sql) {
        const Statement statement = parseStatement(sql);
        std::vector<std::string> found;
        for (const TableReference& table : statement.tables) {
            found.push_back(statement.tableName(table) + "/" + table.alias);
        }
        return found;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(
        tables("SELECT a.x FROM secs_def_evt_rpt evt, secs_report AS rpt WHERE a = b ORDER BY c"),
        (Names{"secs_def_evt_rpt/evt", "secs_report/rpt"}));
    EXPECT_EQ(
        tables("SELECT x FROM (a INNER JOIN b ON f(a.x, 1) = b.x) LEFT JOIN c ON c.y = b.y, d"),
        (Names{"a/a", "b/b", "c/c", "d/d"}));
    EXPECT_EQ(tables("SELECT x FROM t WHERE x IN (SELECT y FROM u)"), (Names{"t/t", "u/u"}));
    EXPECT_EQ(tables("INSERT INTO t (a, b) VALUES (1, 2)"), (Names{"t/t"}));
    EXPECT_EQ(tables("UPDATE t SET a = 1, b = 2"), (Names{"t/t"}));
    EXPECT_EQ(tables("DELETE FROM t WHERE a = 1"), (Names{"t/t"}));
}

TEST(Dialect, InsertedColumnsAreThoseOfItsList) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(insertedColumns(parseStatement("INSERT INTO t (a, [b c]) VALUES (1, 2)")),
              (Names{"a", "b c"}));
    EXPECT_EQ(insertedColumns(parseStatement("INSERT INTO t VALUES (1)")), std::nullopt);
    EXPECT_EQ(insertedColumns(parseStatement("INSERT INTO t SELECT a FROM u")), std::nullopt);
}

}  // namespace
}  // namespace stelvan::sql
