// Rows of one table that were chosen by a statement: whether it would choose them still.
#include "sql/single_table.h"

#include <gtest/gtest.h>

#include "tests/sql/own_table.h"

namespace stelvan::sql {
namespace {

TEST(SingleTable, TellsWhichRowsItWouldStillChoose) {
    const std::vector<std::string> statements{
        "SELECT * FROM t WHERE id = 1 OR id = 2 OR a = 'x'",
        "SELECT x.id FROM t AS x WHERE x.a = 'x' ORDER BY x.id DESC",
        "SELECT id FROM t WHERE a = 'x'",
    };
    for (const std::string& sql : statements) {
        OwnTable table;
        for (int id = 1; id <= 3; ++id)
            table.execute("INSERT INTO t (id, a) VALUES (" + std::to_string(id) + ", 'x')");
        const RowPlaces chosen = table.places(sql);
        ASSERT_EQ(chosen.places.size(), 3U) << sql;
        EXPECT_EQ(table.stillChosen(sql, chosen), 3U) << sql;
        table.execute("UPDATE t SET a = 'y', id = 4 WHERE id = 2");
        EXPECT_EQ(table.stillChosen(sql, chosen), 2U) << sql;
        table.execute("DELETE FROM t WHERE id = 1");
        EXPECT_EQ(table.stillChosen(sql, chosen), 1U) << sql;
    }
}

TEST(SingleTable, WithoutAConditionItWouldChooseWhatIsThere) {
    for (const std::string sql : {"t", "SELECT id, a FROM t", "SELECT * FROM t ORDER BY a"}) {
        OwnTable table;
        table.execute("INSERT INTO t (id) VALUES (1)");
        table.execute("INSERT INTO t (id) VALUES (2)");
        const RowPlaces chosen = table.places(sql);
        table.execute("UPDATE t SET a = 'y' WHERE id = 1");
        table.execute("DELETE FROM t WHERE id = 2");
        EXPECT_EQ(table.stillChosen(sql, chosen), 1U) << sql;
    }
}

}  // namespace
}  // namespace stelvan::sql
