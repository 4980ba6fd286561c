#include "base/utf.h"

#include <gtest/gtest.h>

namespace stelvan::base {
namespace {

struct Pair {
    std::string utf8;
    std::u16string units;
};

const char16_t kHigh = 0xD83D;
const char16_t kLow = 0xDE00;

TEST(Utf, EveryTextComesBackAsItWas) {
    const Pair pairs[] = {
        {"", u""},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
        {"\x7F", u"\u007F"},
        {"\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
        {"\xE0\xA0\x80\xEF\xBF\xBF", u"\u0800\uFFFF"},
        {"\xEF\xBB\xBF\x61", u"\uFEFFa"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
        {"\xF0\x9F\x98\x80", {kHigh, kLow}},
        {"\xED\xA0\xBD", {kHigh}},
        {"a\xED\xB8\x80z", {u'a', kLow, u'z'}},
        {"\xED\xA0\xBD!", {kHigh, u'!'}},
        {"\xED\xB8\x80\xED\xA0\xBD", {kLow, kHigh}},
        {"\xED\xA0\xBD\xF0\x9F\x98\x80", {kHigh, kHigh, kLow}},
        {"\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
    };
    for (const Pair& pair : pairs) {
        EXPECT_EQ(toUtf16(pair.utf8), pair.units) << pair.utf8;
        EXPECT_EQ(toUtf8(pair.units), pair.utf8) << pair.utf8;
        EXPECT_EQ(utf16Length(pair.utf8), pair.units.size()) << pair.utf8;
    }
}

TEST(Utf, TwoHalvesThatFollowEachOtherAreOneCharacter) {
    EXPECT_EQ(toUtf8(toUtf16("\xED\xA0\xBD\xED\xB8\x80")), "\xF0\x9F\x98\x80");
}

TEST(Utf, AByteThatBelongsToNoCharacterIsTheReplacementCharacter) {
    const Pair pairs[] = {
        {"a\xFFz", u"a\uFFFDz"},
        {"\xC3", u"\uFFFD"},
        {"\xC3z", u"\uFFFDz"},
        {"\x80\xBF", u"\uFFFD\uFFFD"},
        {"\xC0\x80", u"\uFFFD\uFFFD"},
        {"\xC1\xBF", u"\uFFFD\uFFFD"},
        {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
        {"\xE2\x82", u"\uFFFD\uFFFD"},
        {"\xE2\x82z", u"\uFFFD\uFFFDz"},
        {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const Pair& pair : pairs) {
        EXPECT_EQ(toUtf16(pair.utf8), pair.units) << pair.utf8;
        EXPECT_EQ(utf16Length(pair.utf8), pair.units.size()) << pair.utf8;
    }
}

TEST(Utf, NothingBehindTheEndOfAViewIsRead) {
    constexpr std::string_view kEuro = "\xE2\x82\xAC";
    EXPECT_EQ(toUtf16(kEuro), u"\u20AC");
    EXPECT_EQ(toUtf16(kEuro.substr(0, 2)), u"\uFFFD\uFFFD");
    EXPECT_EQ(utf16Length(kEuro.substr(0, 1)), 1U);
}

TEST(Utf, SurrogatesAreHighOrLow) {
    struct Row {
        char32_t unit;
        bool high;
        bool low;
    };
    for (const Row& row :
         {Row{0xD7FF, false, false}, Row{0xD800, true, false}, Row{0xDBFF, true, false},
          Row{0xDC00, false, true}, Row{0xDFFF, false, true}, Row{0xE000, false, false}}) {
        EXPECT_EQ(isHighSurrogate(row.unit), row.high);
        EXPECT_EQ(isLowSurrogate(row.unit), row.low);
        EXPECT_EQ(isSurrogate(row.unit), row.high || row.low);
    }
}

}  // namespace
}  // namespace stelvan::base
