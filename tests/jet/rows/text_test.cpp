#include "jet/rows/text.h"

#include <gtest/gtest.h>

#include "base/utf.h"

namespace stelvan::jet {
namespace {

using Stored = std::vector<std::uint8_t>;

std::string decoded(const Stored& stored) {
    return decodeText(stored);
}

Stored encoded(std::string_view text, bool compress) {
    Blob out;
    encodeText(base::toUtf16(text), compress, out);
    Blob quick;
    if (encodeAscii(text, compress, quick)) {
        EXPECT_EQ(quick, out);
    }
    return out;
}

TEST(StoredText, WithoutMarkIsUtf16) {
    EXPECT_EQ(decoded({'a', 0, 0xE4, 0, 0xAC, 0x20}), "a\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(decoded({}), "");
}

TEST(StoredText, WithMarkIsOneBytePerCharacter) {
    EXPECT_EQ(decoded({0xFF, 0xFE, 'r', 'o', 'w'}), "row");
    EXPECT_EQ(decoded({0xFF, 0xFE, 'n', 0xE4, 'h'}), "n\xC3\xA4h");
    EXPECT_EQ(decoded({0xFF, 0xFE}), "");
}

TEST(StoredText, SwitchesToTwoBytesAndBackAtAZero) {
    EXPECT_EQ(decoded({0xFF, 0xFE, 'a', 0, 0x16, 0x04, 0, 'b'}),
              "a\xD0\x96"
              "b");
    EXPECT_EQ(decoded({0xFF, 0xFE, 'a', 0, 0x16, 0x04}), "a\xD0\x96");
}

TEST(StoredText, ThatEndsWithinAUnitIsDamaged) {
    EXPECT_THROW(static_cast<void>(decoded({'a', 0, 'b'})), Error);
    EXPECT_THROW(static_cast<void>(decoded({0xFF, 0xFE, 0, 0x16})), Error);
}

TEST(StoredText, JoinsSurrogatesAndKeepsLoneOnes) {
    EXPECT_EQ(decoded({0x3D, 0xD8, 0x00, 0xDE}), "\xF0\x9F\x98\x80");
    EXPECT_EQ(decoded({0x3D, 0xD8, 'a', 0}),
              "\xED\xA0\xBD"
              "a");
}

TEST(StoredText, IsReadInPlaceWhereItIsAllAscii) {
    const Stored ascii = {0xFF, 0xFE, 'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j'};
    ASSERT_TRUE(textInPlace(ascii).has_value());
    EXPECT_EQ(*textInPlace(ascii), "abcdefghij");
    for (std::size_t at = 2; at < ascii.size(); ++at) {
        for (const std::uint8_t other : {std::uint8_t{0}, std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
            Stored changed = ascii;
            changed[at] = other;
            EXPECT_FALSE(textInPlace(changed).has_value()) << at;
        }
    }
    EXPECT_FALSE(textInPlace(Stored{'a', 0}).has_value());
}

TEST(WrittenText, IsCompressedFromThreeLatinCharactersOn) {
    EXPECT_EQ(encoded("abc", true), (Stored{0xFF, 0xFE, 'a', 'b', 'c'}));
    EXPECT_EQ(encoded("\xC3\xA4\xC3\xB6\xC3\xBC", true), (Stored{0xFF, 0xFE, 0xE4, 0xF6, 0xFC}));
    EXPECT_EQ(encoded("ab", true), (Stored{'a', 0, 'b', 0}));
    EXPECT_EQ(encoded("", true), Stored{});
}

TEST(WrittenText, IsPlainWithoutTheFlagOrWithOtherCharacters) {
    EXPECT_EQ(encoded("abc", false), (Stored{'a', 0, 'b', 0, 'c', 0}));
    EXPECT_EQ(encoded("ab\xE2\x82\xAC", true), (Stored{'a', 0, 'b', 0, 0xAC, 0x20}));
    EXPECT_EQ(encoded(std::string("a\0b", 3), true), (Stored{'a', 0, 0, 0, 'b', 0}));
}

TEST(Names, AreEqualButForTheCaseOfLetters) {
    EXPECT_TRUE(sameName("Secs_CusVar", "secs_cusvar"));
    EXPECT_TRUE(sameName("\xC3\x84pfel", "\xC3\xA4PFEL"));
    EXPECT_TRUE(sameName("\xD0\x96", "\xD0\xB6"));
    EXPECT_FALSE(sameName("a", "\xC3\xA4"));
    EXPECT_FALSE(sameName("ab", "abc"));
}

}  // namespace
}  // namespace stelvan::jet
