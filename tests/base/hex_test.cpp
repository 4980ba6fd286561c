#include "base/hex.h"

#include <gtest/gtest.h>

#include <string>

namespace stelvan::base {
namespace {

constexpr GuidBytes kGuid = {0xAB, 0xCD, 0xEF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0xFD};
constexpr const char* kText = "{ABCDEF01-0203-0405-0607-08090A0B0CFD}";

TEST(Hex, IsTwoLowerCaseDigitsForAByte) {
    EXPECT_EQ(hexText(std::array<std::uint8_t, 3>{0x00, 0xAB, 0xFF}), "00abff");
    EXPECT_EQ(hexText({}), "");
}

TEST(Guid, IsWrittenAndReadInBraces) {
    EXPECT_EQ(guidText(kGuid), kText);
    EXPECT_EQ(parseGuid(kText), kGuid);
    EXPECT_EQ(parseGuid("{abcdef01-0203-0405-0607-08090a0b0cfd}"), kGuid);
}

TEST(Guid, OfAnyOtherFormIsNone) {
    const std::string text = kText;
    EXPECT_FALSE(parseGuid(""));
    EXPECT_FALSE(parseGuid(text.substr(1, text.size() - 2)));
    EXPECT_FALSE(parseGuid(text + "0"));
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const char wrong : {'G', ' ', '/', ':', '@'}) {
            std::string changed = text;
            changed[at] = wrong;
            EXPECT_FALSE(parseGuid(changed)) << changed;
        }
    }
}

}  // namespace
}  // namespace stelvan::base
