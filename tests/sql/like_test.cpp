#include "sql/like.h"

#include <gtest/gtest.h>

namespace stelvan::sql {
namespace {

TEST(Like, PercentIsAnyTextAndUnderscoreOneCharacter) {
    EXPECT_TRUE(matchesLike("ChamberPressure", "Chamber%"));
    EXPECT_TRUE(matchesLike("ChamberPressure", "%press%"));
    EXPECT_TRUE(matchesLike("abcabd", "%ab_"));
    EXPECT_FALSE(matchesLike("abcabd", "%abc"));
    EXPECT_TRUE(matchesLike("", "%"));
    EXPECT_FALSE(matchesLike("", "_"));
    EXPECT_TRUE(matchesLike("\xC3\xA4x", "_x"));
}

TEST(Like, LetterCaseDoesNotCount) {
    EXPECT_TRUE(matchesLike("LOT", "lot"));
    EXPECT_TRUE(matchesLike("\xC3\x84rger", "\xC3\xA4%"));
}

TEST(Like, BracketsAreASetOfCharacters) {
    EXPECT_TRUE(matchesLike("T3", "T[1-8]"));
    EXPECT_FALSE(matchesLike("T9", "T[1-8]"));
    EXPECT_TRUE(matchesLike("T9", "T[!1-8]"));
    EXPECT_TRUE(matchesLike("100%", "100[%]"));
    EXPECT_FALSE(matchesLike("1000", "100[%]"));
}

TEST(Like, StarsAndQuestionMarksAreThemselves) {
    EXPECT_FALSE(matchesLike("abc", "a*"));
    EXPECT_TRUE(matchesLike("a*", "a*"));
}

}  // namespace
}  // namespace stelvan::sql
