#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace stelvan::base {
namespace {

TEST(Blanks, AreTrimmedAndNothingElseIs) {
    EXPECT_EQ(trimBlanks("  a b "), "a b");
    EXPECT_EQ(trimBlanks("\ta"), "\ta");
    EXPECT_EQ(trimBlanks(" \xC2\xA0 "), "\xC2\xA0");
    EXPECT_EQ(trimBlanks("a\r\n "), "a\r\n");
    EXPECT_EQ(trimBlanks("    "), "");
    EXPECT_EQ(trimBlanks(""), "");
}

TEST(Blanks, AtTheEndAloneAreTakenAwayToo) {
    EXPECT_EQ(withoutTrailingBlanks("  a b  "), "  a b");
    EXPECT_EQ(withoutTrailingBlanks("   "), "");
    EXPECT_EQ(withoutTrailingBlanks(u"  a\t "), u"  a\t");
    EXPECT_EQ(withoutTrailingBlanks(u""), u"");
}

TEST(Blanks, AloneMakeABlankText) {
    EXPECT_TRUE(isBlank(""));
    EXPECT_TRUE(isBlank("   "));
    for (const char* text : {"\t", "\n", "\r\n", "\xC2\xA0", "\xE3\x80\x80", " . "})
        EXPECT_FALSE(isBlank(text)) << text;
}

TEST(Blanks, BetweenOtherCharactersAreInner) {
    EXPECT_TRUE(hasInnerBlank("a b"));
    EXPECT_TRUE(hasInnerBlank("\t a"));
    for (const char* text : {"", "  ", " a", "a ", "a\tb", "a\xC2\xA0z"})
        EXPECT_FALSE(hasInnerBlank(text)) << text;
}

TEST(Case, IsThatOfAsciiLettersAlone) {
    EXPECT_EQ(upperCase("abz{`09_\xC3\xA4"), "ABZ{`09_\xC3\xA4");
    EXPECT_EQ(upperCase('a'), 'A');
    EXPECT_EQ(upperCase('\xE4'), '\xE4');
}

TEST(Case, DoesNotCountInWords) {
    EXPECT_TRUE(sameWord("Data Source", "DATA SOURCE"));
    EXPECT_TRUE(sameWord("", ""));
    EXPECT_FALSE(sameWord("mode", "modes"));
    EXPECT_FALSE(sameWord("modes", "mode"));
    EXPECT_FALSE(sameWord("@", "`")) << "as far apart as a letter and its capital";
    EXPECT_FALSE(sameWord("\xC3\xA4", "\xC3\x84"));
}

TEST(Characters, LettersAndDigitsAreThoseOfAscii) {
    for (const char c : {'a', 'm', 'z', 'A', 'M', 'Z'}) EXPECT_TRUE(isLetter(c)) << c;
    for (const char c : {'@', '[', '`', '{', '0', '_', '\xE4'}) EXPECT_FALSE(isLetter(c)) << c;
    for (const char c : {'0', '5', '9'}) EXPECT_TRUE(isDigit(c)) << c;
    for (const char c : {'/', ':', 'a', '\xB2'}) EXPECT_FALSE(isDigit(c)) << c;
}

struct Line {
    const char16_t* text;
    const char16_t* onOneLine;
    const char16_t* withPlainBlanks;
};

TEST(OneLine, HasABlankForEachLineBreakAndTab) {
    const Line lines[] = {
        {u"", u"", u""},
        {u"plain", u"plain", u"plain"},
        {u"a b", u"a b", u"a b"},
        {u"a\r\nb", u"a b", u"a b"},
        {u"a\nb", u"a b", u"a b"},
        {u"a\rb", u"a b", u"a b"},
        {u"a\n\rb", u"a  b", u"a  b"},
        {u"a\r\r\nb\r", u"a  b ", u"a  b "},
        {u"a\tb", u"a b", u"a b"},
        {u"a\vb\fc", u"a b c", u"a b c"},
        {u"a\u0085b", u"a b", u"a b"},
        {u"a\u2028b\u2029c", u"a b c", u"a b c"},
        {u"a\u00A0b", u"a\u00A0b", u"a b"},
        {u"a\u1680b", u"a\u1680b", u"a b"},
        {u"\u2000\u200A", u"\u2000\u200A", u"  "},
        {u"\u202F\u205F", u"\u202F\u205F", u"  "},
        {u"\u3000\uFEFF", u"\u3000\uFEFF", u"  "},
        {u"\u200B\u2027\u202A\x08\x0E", u"\u200B\u2027\u202A\x08\x0E",
         u"\u200B\u2027\u202A\x08\x0E"},
        {u"\U0001F600\r\n", u"\U0001F600 ", u"\U0001F600 "},
    };
    for (const Line& line : lines) {
        EXPECT_EQ(onOneLine(std::u16string_view(line.text)), line.onOneLine);
        EXPECT_EQ(withPlainBlanks(line.text), line.withPlainBlanks);
    }
}

TEST(OneLine, OfUtf8KeepsAllOtherBytes) {
    EXPECT_EQ(onOneLine("a\r\nb\nc\td"), "a b c d");
    EXPECT_EQ(onOneLine("a\xE2\x80\xA8z\xE2\x80\xA9"), "a z ");
    EXPECT_EQ(onOneLine("\xC2\x85"), " ");
    EXPECT_EQ(onOneLine("\xC2\xA0\xED\xA0\xBD\xF0\x9F\x98\x80"),
              "\xC2\xA0\xED\xA0\xBD\xF0\x9F\x98\x80");
    EXPECT_EQ(onOneLine("/home/u/\xFF\xE2\x80\n"), "/home/u/\xFF\xE2\x80 ")
        << "a path is any bytes";
}

}  // namespace
}  // namespace stelvan::base
