#include "gemdb/json_line.h"

#include <gtest/gtest.h>

#include <limits>

namespace stelvan::gemdb {
namespace {

std::string json(const jet::Value& value) {
    std::string out;
    appendJsonValue(out, jet::toView(value));
    return out;
}

TEST(JsonLine, WritesMembersInTheOrderOfTheCalls) {
    JsonLine line;
    line.open('{').member("a").number(1).member("b").open('[').text("x").flag(true).close(']');
    EXPECT_EQ(line.member("c").open('{').close('}').close('}').take(),
              "{\"a\":1,\"b\":[\"x\",true],\"c\":{}}\n");
    EXPECT_EQ(line.open('{').close('}').take(), "{}\n") << "a line taken leaves nothing behind";
}

TEST(JsonLine, EscapesWhatJsonDemandsAndControlCharacters) {
    EXPECT_EQ(json(std::string("a\"b\\c\n\r\t\x01\x1f\x7f")),
              R"("a\"b\\c\n\r\t\u0001\u001f\u007f")");
    EXPECT_EQ(json(std::string("\xE6\xBC\xA2\xF0\x9F\x98\x80")),
              "\"\xE6\xBC\xA2\xF0\x9F\x98\x80\"");
}

TEST(JsonLine, EscapesAtWhateverPlaceOfATextOfWhateverLength) {
    const std::vector<std::pair<std::string, std::string>> special{
        {"\"", R"(\")"}, {"\\", R"(\\)"},       {"\x1f", R"(\u001f)"},
        {"\n", R"(\n)"}, {"\x7f", R"(\u007f)"}, {"\xED\xA0\x80", R"(\ud800)"}};
    for (const auto& [stored, written] : special) {
        for (std::size_t before = 0; before < 20; ++before) {
            for (std::size_t after = 0; after < 20; ++after) {
                const std::string front(before, ' ');
                const std::string back(after, '\xC3');
                ASSERT_EQ(json(front + stored + back), '"' + front + written + back + '"');
                ASSERT_EQ(json(front + stored + stored + back),
                          '"' + front + written + written + back + '"');
            }
        }
    }
}

TEST(JsonLine, WritesHalfASurrogatePairAsAnEscape) {
    EXPECT_EQ(json(std::string("x\xED\xA0\x80y")), R"("x\ud800y")");
    EXPECT_EQ(json(std::string("\xED\xBF\xBF")), R"("\udfff")");
    EXPECT_EQ(json(std::string("\xFFz\xE2\x82")), "\"\xFFz\xE2\x82\"") << "other bytes stay";
    EXPECT_EQ(json(std::string("\xED\x9F\xBF")), "\"\xED\x9F\xBF\"")
        << "U+D7FF is an ordinary character";
}

TEST(JsonLine, WritesWholeDoublesWithoutAPoint) {
    EXPECT_EQ(json(101.0), "101");
    EXPECT_EQ(json(100000.0), "100000");
    EXPECT_EQ(json(-0.5), "-0.5");
    EXPECT_EQ(json(0.1), "0.1");
    EXPECT_EQ(json(0.1F), "0.1");
    EXPECT_EQ(json(1e300), "1e+300");
    EXPECT_EQ(json(std::numeric_limits<double>::infinity()), "\"Infinity\"");
    EXPECT_EQ(json(std::numeric_limits<float>::quiet_NaN()), "\"NaN\"");
}

TEST(JsonLine, WritesMoneyWithItsFourPlaces) {
    EXPECT_EQ(json(jet::Money{35000}), "3.5000");
    EXPECT_EQ(json(jet::Money{-1}), "-0.0001");
    EXPECT_EQ(json(jet::Money{0}), "0.0000");
    EXPECT_EQ(json(jet::Money{std::numeric_limits<std::int64_t>::min()}), "-922337203685477.5808");
}

TEST(JsonLine, WritesDecimalsWithAllTheirStoredPlaces) {
    EXPECT_EQ(json(jet::Numeric{false, 0, {0, 0, 0, 4}}), "4");
    EXPECT_EQ(json(jet::Numeric{true, 3, {0, 0, 0, 1500}}), "-1.500");
    EXPECT_EQ(json(jet::Numeric{true, 2, {0, 0, 0, 0}}), "0.00");
    EXPECT_EQ(json(jet::Numeric{false, 0, {0, 1, 0, 0}}), "18446744073709551616");
    EXPECT_EQ(json(jet::Numeric{false, 28, {0, 0, 0, 7}}), "0.0000000000000000000000000007");
}

TEST(JsonLine, WritesDatesToTheSecondAndFractionsWhereThereAreAny) {
    EXPECT_EQ(json(jet::DateTime{0}), "\"1899-12-30T00:00:00\"");
    EXPECT_EQ(json(jet::DateTime{2.5}), "\"1900-01-01T12:00:00\"");
    EXPECT_EQ(json(jet::DateTime{-1.25}), "\"1899-12-29T06:00:00\"")
        << "the fraction is the time of day";
    EXPECT_EQ(json(jet::DateTime{45658 + 1.5 / 86400}), "\"2025-01-01T00:00:01.500\"");
    EXPECT_EQ(json(jet::DateTime{45657.9999999999}), "\"2025-01-01T00:00:00\"")
        << "rounded up to the next day";
    EXPECT_EQ(json(jet::DateTime{-657434.5}), "\"0100-01-01T12:00:00\"") << "noon of the first day";
    EXPECT_EQ(json(jet::DateTime{1e12}), "1000000000000") << "no date of the calendar";
}

TEST(JsonLine, WritesBytesFlagsGuidsAndNull) {
    EXPECT_EQ(json(jet::Blob{0x00, 0xAB, 0xFF}), "\"00abff\"");
    EXPECT_EQ(json(true), "true");
    EXPECT_EQ(json(jet::Null{}), "null");
    EXPECT_EQ(json(jet::Guid{{0xAB, 0xCD, 0xEF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}}),
              "\"{ABCDEF01-0203-0405-0607-08090A0B0C0D}\"");
}

}  // namespace
}  // namespace stelvan::gemdb
