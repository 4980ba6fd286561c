#include "sql/tokens.h"

#include <gtest/gtest.h>

#include <string>

namespace stelvan::sql {
namespace {

TEST(Tokens, AWordIsAKeywordInAnyLetterCase) {
    for (const char* text : {"select", "SELECT", "sElEcT"})
        EXPECT_TRUE(tokenize(text).at(0).isWord("SELECT")) << text;
    EXPECT_FALSE(tokenize("[SELECT]").at(0).isWord("SELECT"));
    EXPECT_FALSE(tokenize("selects").at(0).isWord("SELECT"));
}

TEST(Tokens, BeyondAsciiEveryByteBelongsToAWord) {
    const Tokens tokens = tokenize(
        "gr\xC3\xB6\xC3\x9F"
        "e\xE2\x82\xAC=1");
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[0].text,
              "gr\xC3\xB6\xC3\x9F"
              "e\xE2\x82\xAC");
}

TEST(Tokens, TheFirstWordEndsWhereATokenDoes) {
    struct Row {
        const char* sql;
        const char* word;
    };
    for (const Row& row :
         {Row{"SELECT * FROM t", "SELECT"}, Row{" \t\r\nselect*from t", "select"},
          Row{"SELECT", "SELECT"}, Row{"selection_2", "selection_2"},
          Row{"SELECT\xC3\xA9 1", "SELECT\xC3\xA9"}, Row{"", ""}, Row{"  ", ""}, Row{"1a", ""},
          Row{"[SELECT]", ""}, Row{"\vSELECT 1", ""}, Row{"(SELECT 1)", ""}}) {
        EXPECT_EQ(firstWord(row.sql), row.word) << row.sql;
    }
}

TEST(Tokens, TheRefusedExpressionIsShownWithoutItsOuterBlanks) {
    const std::string sql = "SELECT  a !  ";
    try {
        static_cast<void>(tokenize(sql));
        FAIL() << "nothing was refused";
    } catch (const std::exception& failure) {
        EXPECT_NE(std::string(failure.what()).find("'a !'"), std::string::npos) << failure.what();
    }
}

}  // namespace
}  // namespace stelvan::sql
