#include "jet/index/collation.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/utf.h"
#include "tests/jet/index/text_weights.h"

namespace stelvan::jet {
namespace {

using test::fromHex;
using test::TextWeights;
using test::toHex;

std::vector<std::uint8_t> keyOf(std::string_view text, bool ascending = true) {
    std::vector<std::uint8_t> key = {static_cast<std::uint8_t>(ascending ? 0x7F : 0x80)};
    appendTextKey(key, text, ascending);
    return key;
}

struct KnownKey {
    std::string text;
    std::string ascending;
    std::string descending;
};

const KnownKey kKnownKeys[] = {
    {"", "7F 01 00", "80 FE FF 00"},
    {"abc", "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
    {"ABC", "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
    {"ABC  ", "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
    {"Müller", "7F 60 6F 5E 5E 51 69 01 02 13 00", "80 9F 90 A1 A1 AE 96 FE FD EC FF 00"},
    {"a-b", "7F 4A 4C 01 01 01 01 80 0B 06 82 00", "80 B5 B3 FE FE FE FE 7F F4 F9 7D FF 00"},
    {"-", "7F 01 01 01 01 80 07 06 82 00", "80 FE FE FE FE 7F F8 F9 7D FF 00"},
    {"it's", "7F 59 6D 6B 01 01 01 01 80 0F 06 80 00", "80 A6 92 94 FE FE FE FE 7F F0 F9 7F FF 00"},
    {"é", "7F 51 01 0E 00", "80 AE FE F1 FF 00"},
    {"e\u0301", "7F 51 01 0E 00", "80 AE FE F1 FF 00"},
    {"Æsir", "7F 4A 51 6B 59 69 01 00", "80 B5 AE 94 A6 96 FE FF 00"},
    {"Nuß-Nougat", "7F 62 6F 6B 6B 62 64 6F 55 4A 6D 01 01 01 01 80 17 06 82 00", ""},
    {"カナ", "7F 7F 0A 7F 22 01 01 01 FF 02 80 FF 80 00", ""},
};

TEST(Collation, MakesTheKeysThatRealFilesHold) {
    for (const KnownKey& known : kKnownKeys) {
        EXPECT_EQ(toHex(keyOf(known.text)), known.ascending) << known.text;
        if (known.descending.empty()) continue;
        EXPECT_EQ(toHex(keyOf(known.text, false)), known.descending) << known.text;
    }
}

TEST(Collation, PunctuationStandsInItsOrderAndBlanksWithinATextCount) {
    EXPECT_EQ(toHex(keyOf("a ^b")), "7F 4A 07 2B 02 4C 01 00");
    EXPECT_EQ(toHex(keyOf("\t~")), "7F 08 03 2B 0F 01 00");
    EXPECT_EQ(toHex(keyOf(" a")), "7F 07 4A 01 00");
    EXPECT_EQ(toHex(keyOf("   ")), "7F 01 00");
}

TEST(Collation, ACharacterOfTwoLettersMovesWhatFollowsByTwoUnlessALaterEngineWroteIt) {
    EXPECT_EQ(toHex(keyOf("ßä-")), "7F 6B 6B 4A 01 02 02 13 01 01 01 80 13 06 82 00");
    std::vector<std::uint8_t> key;
    appendTextKey(key, "ßä-", true, ExpansionCount::Once);
    EXPECT_EQ(toHex(key), "6B 6B 4A 01 02 13 01 01 01 80 0F 06 82 00");
}

TEST(Collation, CharactersWithoutAWeightDoNotCount) {
    EXPECT_EQ(keyOf(std::string("a\0b", 3)), keyOf("ab"));
    EXPECT_TRUE(equalText(std::string("a\0b", 3), "ab"));
    EXPECT_TRUE(equalText(std::string("ab\0", 3), "ab"));
}

TEST(Collation, HalvesOfPairsGetWeightsFromTheirNumbers) {
    EXPECT_EQ(toHex(keyOf("\U0001F600")), "7F B0 3F B6 FC 01 3F 3F 00");
    EXPECT_EQ(toHex(keyOf("\xED\xA0\xBD")), "7F B0 3F 01 3F 00") << "a half without its partner";
}

TEST(Collation, OnlyTheFirst255UnitsTakePartInAKey) {
    const std::string full(255, 'x');
    EXPECT_EQ(keyOf(full + "y"), keyOf(full));
    EXPECT_NE(keyOf(full), keyOf(full.substr(1)));
    EXPECT_EQ(keyOf(std::string(254, 'x') + " y"), keyOf(full.substr(1)))
        << "blanks at the cut are trailing";
    EXPECT_FALSE(equalText(full + "y", full)) << "comparing looks at the whole texts";

    std::string wide;
    for (int i = 0; i < 255; ++i) wide += "ü";
    EXPECT_EQ(keyOf(wide + "ab"), keyOf(wide));
}

TEST(Collation, AModifierBeforeTheFirstLetterShiftsTheAccents) {
    EXPECT_EQ(toHex(keyOf("\u0301ab")), "7F 4A 4C 01 0C 00");
    EXPECT_EQ(toHex(keyOf("\u0301aé")), "7F 4A 51 01 0C 02 0E 00");
}

TEST(Collation, EveryListedCharacterHasTheKeyThatTheWeightsGive) {
    if (TextWeights::path().empty()) GTEST_SKIP() << "the file of weights is absent";
    const TextWeights weights(TextWeights::path());
    ASSERT_GT(weights.listed().size(), 44000u);
    std::vector<std::uint8_t> key;
    for (char32_t c = 1; c <= 0xFFFF; ++c) {
        const auto unit = static_cast<char16_t>(c);
        for (const std::u16string& text :
             {std::u16string{unit}, std::u16string{u'a', unit, u'b', u'é'},
              std::u16string{u'ö', unit, unit}}) {
            key.clear();
            appendTextKey(key, base::toUtf8(text), true);
            // A trailing blank is no part of the key that the weights alone give.
            const std::u16string_view counted(text.data(), text.find_last_not_of(u' ') + 1);
            ASSERT_EQ(toHex(key), toHex(weights.key(counted)))
                << std::hex << static_cast<std::uint32_t>(c);
        }
    }
}

TEST(Collation, MixedTextsHaveTheKeysThatTheWeightsGive) {
    if (TextWeights::path().empty()) GTEST_SKIP() << "the file of weights is absent";
    const TextWeights weights(TextWeights::path());
    std::mt19937 random(7);
    std::vector<std::uint8_t> key;
    for (int round = 0; round < 20000; ++round) {
        std::u16string text;
        const std::size_t length = random() % 12;
        for (std::size_t i = 0; i < length; ++i) {
            // Half of the characters are kana, marks and halves of pairs, whose rules depend on
            // each other.
            static constexpr char16_t kStarts[] = {0x3040, 0x0300, 0xD7F0, 0xDBF0, 0x0000, 0xFF60};
            text += static_cast<char16_t>(
                random() % 2 == 0 ? kStarts[random() % 6] + random() % 0x60 : random() % 0x10000);
        }
        if (text.ends_with(u' ')) text.back() = u'x';
        key.clear();
        appendTextKey(key, base::toUtf8(text), true);
        ASSERT_EQ(toHex(key), toHex(weights.key(text))) << "round " << round;
    }
}

std::string randomText(std::mt19937& random) {
    static const std::string kPieces[] = {"a",       "A", "b",  " ",    "-",      "'", "é",
                                          "e\u0301", "ß", "ss", "1",    "_",      "ü", "ナ",
                                          "ﾅ",       "^", "\t", "\x01", "\u0301", "z"};
    std::string text;
    const std::size_t length = random() % 6;
    for (std::size_t i = 0; i < length; ++i) text += kPieces[random() % std::size(kPieces)];
    return text;
}

TEST(Collation, ComparingAgreesWithTheKeys) {
    std::mt19937 random(11);
    for (int round = 0; round < 50000; ++round) {
        const std::string a = randomText(random);
        const std::string b = randomText(random);
        const auto order = keyOf(a) <=> keyOf(b);
        const int compared = compareText(a, b);
        ASSERT_EQ(compared < 0, order < 0) << '"' << a << "\" \"" << b << '"';
        ASSERT_EQ(compared > 0, order > 0) << '"' << a << "\" \"" << b << '"';
        const auto reversed = keyOf(b, false) <=> keyOf(a, false);
        ASSERT_EQ(order, reversed) << '"' << a << "\" \"" << b << '"';
    }
}

TEST(Collation, OnlyTheUsualOrderIsComputed) {
    EXPECT_TRUE(canCollate({0x0409, 0}));
    EXPECT_FALSE(canCollate({0x0409, 1}));
    EXPECT_FALSE(canCollate({0x041D, 0}));
}

}  // namespace
}  // namespace stelvan::jet
