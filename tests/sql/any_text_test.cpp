// Whatever text comes in, it ends in rows or in a refusal.
#include <gtest/gtest.h>

#include <random>

#include "jet/disk/error.h"
#include "sql/engine.h"
#include "sql/error.h"
#include "tests/support/models.h"

namespace stelvan::sql {
namespace {

constexpr const char* kPieces[] = {"SELECT ",
                                   "select * ",
                                   "FROM ",
                                   "secs_cusvar ",
                                   "secs_report rpt",
                                   ", ",
                                   "WHERE ",
                                   "var_id ",
                                   "rpt.rpt_id ",
                                   "= ",
                                   "<> ",
                                   "'text' ",
                                   "'",
                                   "\"",
                                   "[",
                                   "] ",
                                   "(",
                                   ") ",
                                   "AND ",
                                   "NOT ",
                                   "IN ",
                                   "BETWEEN ",
                                   "LIKE '%a_[b-c]' ",
                                   "ORDER BY ",
                                   "GROUP BY ",
                                   "MAX(",
                                   "COUNT(*) ",
                                   "True ",
                                   "NULL ",
                                   "IS ",
                                   "-",
                                   "1",
                                   ".5",
                                   "1e3 ",
                                   "*",
                                   ";",
                                   "--",
                                   "/*",
                                   "?",
                                   ":x ",
                                   "UNION ",
                                   "INNER JOIN ",
                                   "ON ",
                                   "AS x ",
                                   "rowid ",
                                   "\xC3\xA4 ",
                                   "LIMIT 5 ",
                                   "EXISTS "};

TEST(AnyText, EndsInRowsOrInARefusal) {
    const test::ScratchDir scratch;
    jet::Database database = jet::Database::open(scratch.copyOf(test::model("gem.mdb")));
    Engine engine(database);
    std::mt19937 random(20240229);
    int refused = 0;
    int answered = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string sql = round % 3 == 0 ? "" : "SELECT var_id FROM secs_cusvar WHERE ";
        for (auto pieces = random() % 9; pieces > 0; --pieces)
            sql += kPieces[random() % std::size(kPieces)];
        try {
            (void)engine.select(sql);
            ++answered;
        } catch (const Error& error) {
            EXPECT_STRNE(error.what(), "") << sql;
            ++refused;
        }
    }
    EXPECT_GT(refused, 0);
    EXPECT_GT(answered, 0);
}

}  // namespace
}  // namespace stelvan::sql
