// Empty texts, Null and dates as statements see them.
#include "sql/sqlite_values.h"

#include <gtest/gtest.h>

#include "sql/error.h"
#include "tests/sql/own_table.h"

namespace stelvan::sql {
namespace {

using Numbers = std::vector<int>;

TEST(Values, AnEmptyTextIsATextAndOnlyNullIsNull) {
    OwnTable table;
    table.execute("INSERT INTO t (id, a, b) VALUES (1, '', '')");
    table.execute("INSERT INTO t (id) VALUES (2)");
    table.execute("INSERT INTO t (id, a, b) VALUES (3, 'x', 'x')");
    for (const std::string column : {"a", "b"}) {
        EXPECT_EQ(table.where(column + " = ''"), Numbers{1});
        EXPECT_EQ(table.where(column + " <> 'x'"), Numbers{1});
        EXPECT_EQ(table.where(column + " <> ''"), Numbers{3});
        EXPECT_EQ(table.where(column + " IS NULL"), Numbers{2});
        EXPECT_EQ(table.where(column + " IS NOT NULL"), (Numbers{1, 3}));
        EXPECT_EQ(table.where(column + " LIKE '%'"), (Numbers{1, 3}));
        EXPECT_EQ(table.values("SELECT MIN(" + column + ") FROM t").front(),
                  jet::Value(std::string()));
    }
}

TEST(Values, AnEmptyTextIsCopiedAsOne) {
    OwnTable table;
    table.execute("INSERT INTO t (id, a) VALUES (1, '')");
    table.execute("INSERT INTO t (id, b) VALUES (2, 'x')");
    table.execute("UPDATE t SET b = a");
    EXPECT_EQ(table.where("b = ''"), Numbers{1});
    EXPECT_EQ(table.where("b IS NULL"), Numbers{2});
    table.execute("INSERT INTO t (id, a, b) SELECT 3, b, a FROM t WHERE id = 1");
    EXPECT_EQ(table.where("a = '' AND b = ''"), (Numbers{1, 3}));
}

TEST(Values, DatesAreWrittenBetweenNumberSigns) {
    OwnTable table;
    table.execute("INSERT INTO t (id, made) VALUES (1, #2004-10-16 11:22:33#)");
    table.execute("INSERT INTO t (id, made) VALUES (2, #10/16/2004#)");
    table.execute("INSERT INTO t (id, made) VALUES (3, #1899-12-29 06:00:00#)");
    EXPECT_EQ(table.where("made = #10/16/2004 11:22:33 AM#"), Numbers{1});
    EXPECT_EQ(table.where("made = #2004-10-16#"), Numbers{2});
    EXPECT_EQ(table.where("made > #10/16/2004#"), Numbers{1});
    EXPECT_EQ(table.where("made < #1/1/1900#"), Numbers{3});
    EXPECT_EQ(table.where("made BETWEEN #10/15/2004# AND #10/17/2004#"), (Numbers{1, 2}));
    EXPECT_EQ(table.where("made - #2004-10-15# = 1"), Numbers{2});
}

TEST(Values, AnIsoTextBecomesADateInADateColumn) {
    OwnTable table;
    table.execute("INSERT INTO t (id, made) VALUES (1, '2004-10-16 11:22:33')");
    table.execute("INSERT INTO t (id, made) VALUES (2, '2004-10-16T11:22:33')");
    table.execute("INSERT INTO t (id, made) VALUES (3, ' 2004-10-16 ')");
    EXPECT_EQ(table.where("made = #2004-10-16 11:22:33#"), (Numbers{1, 2}));
    EXPECT_EQ(table.where("made = #2004-10-16#"), Numbers{3});
    EXPECT_THROW(table.execute("UPDATE t SET made = '10/16/2004'"), jet::Error);
}

TEST(Values, WhatIsNoDateIsRefusedByItsExpression) {
    OwnTable table;
    for (const std::string literal :
         {"#2004-13-01#", "#30/1/2004#", "#soon#", "##", "#10/16/2004"}) {
        try {
            (void)table.where("made = " + literal);
            ADD_FAILURE() << literal;
        } catch (const Error& error) {
            EXPECT_EQ(error.what(),
                      "Syntax error in date in query expression 'made = " + literal + "'.");
        }
    }
}

}  // namespace
}  // namespace stelvan::sql
