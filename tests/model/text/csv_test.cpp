#include "model/text/csv.h"

#include <gtest/gtest.h>

#include <random>

#include "model/core/refusal.h"

namespace stelvan::test {
namespace {

using Cells = std::vector<std::string>;

TEST(Csv, ReadsQuotesBreaksAndBothSeparators) {
    const auto records = model::parseCsv("a,b\r\n\"x, \"\"y\"\"\",\"one\r\ntwo\"\nlast,\n");
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1].cells, (Cells{"x, \"y\"", "one\r\ntwo"}));
    EXPECT_EQ(records[1].line, 2U);
    EXPECT_EQ(records[2].cells, (Cells{"last", ""}));
    EXPECT_EQ(records[2].line, 4U);
    const auto semicolons = model::parseCsv("\xEF\xBB\xBF\"a,1\";b;c\n1,5;2;3");
    ASSERT_EQ(semicolons.size(), 2U);
    EXPECT_EQ(semicolons[0].cells, (Cells{"a,1", "b", "c"}));
    EXPECT_EQ(semicolons[1].cells, (Cells{"1,5", "2", "3"}));
}

TEST(Csv, LeavesOutEmptyLines) {
    EXPECT_EQ(model::parseCsv("a,b\n\n,\n1,2\n").size(), 2U);
    EXPECT_TRUE(model::parseCsv("").empty());
}

TEST(Csv, TellsTheLineOfABrokenQuote) {
    for (const char* text : {"a\n\"b", "a\n\"b\"c\n"}) {
        try {
            (void)model::parseCsv(text);
            ADD_FAILURE() << text;
        } catch (const model::Refusal& refusal) {
            EXPECT_EQ(std::string(refusal.what()).substr(0, 7), "line 2:");
        }
    }
}

TEST(Csv, WhatLooksLikeAFormulaIsGuardedAndComesBack) {
    EXPECT_EQ(model::guardedCell("=1+1"), "'=1+1");
    EXPECT_EQ(model::guardedCell("@x"), "'@x");
    EXPECT_EQ(model::guardedCell("-5.5"), "-5.5");
    EXPECT_EQ(model::guardedCell("-abc"), "'-abc");
    for (const char* text : {"", "=1", "'=1", "''", "+x", "-1", "x'"})
        EXPECT_EQ(model::unguardedCell(model::guardedCell(text)), text);
}

TEST(Csv, AnyCellsComeBackAsTheyWere) {
    std::mt19937 random(3);  // NOLINT: the same cells each time
    for (int round = 0; round < 2000; ++round) {
        Cells cells{"x"};
        for (std::size_t left = 1 + random() % 4; left > 0; --left) {
            std::string cell;
            for (std::size_t length = random() % 6; length > 0; --length)
                cell += "a ,;\"\r\n\t'=\xC3"[random() % 11];
            cells.push_back(cell);
        }
        std::string text = "h,h,h\r\n";  // of three, so that the comma parts
        model::appendCsv(text, cells);
        const auto records = model::parseCsv(text);
        ASSERT_EQ(records.size(), 2U) << text;
        EXPECT_EQ(records[1].cells, cells) << text;
    }
}

}  // namespace
}  // namespace stelvan::test
