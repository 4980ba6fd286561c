#include "db/value_text.h"

#include <gtest/gtest.h>

#include "base/run_time_error.h"

namespace stelvan::db {
namespace {

int failureNumber(const std::function<void()>& body) {
    try {
        body();
    } catch (const base::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(ValueText, WholeNumbersArePlainDecimals) {
    EXPECT_EQ(toText(Value(std::int32_t{101})), "101");
    EXPECT_EQ(toText(Value(std::int32_t{-7})), "-7");
    EXPECT_EQ(toText(Value(101.0)), "101");
    EXPECT_EQ(toText(Value(2147483647.0)), "2147483647");
    EXPECT_EQ(toText(Value(-0.0)), "0");
    EXPECT_EQ(toText(Value(1e20)), "100000000000000000000");
}

TEST(ValueText, FractionsAreTheShortestTextThatReadsBackEqual) {
    EXPECT_EQ(toText(Value(0.1)), "0.1");
    EXPECT_EQ(toText(Value(0.1F)), "0.1");
    EXPECT_EQ(toText(Value(-2.5)), "-2.5");
    EXPECT_EQ(toText(Value(0.0001)), "0.0001");
    EXPECT_EQ(toText(Value(1e-300)), "1e-300");
}

TEST(ValueText, CurrencyAndDecimalLoseZerosThatSayNothing) {
    EXPECT_EQ(toText(Value(jet::Money{35000})), "3.5");
    EXPECT_EQ(toText(Value(jet::Money{-1010000})), "-101");
    EXPECT_EQ(toText(Value(jet::Money{1})), "0.0001");
    EXPECT_EQ(toText(Value(jet::Money{INT64_MIN})), "-922337203685477.5808");
    EXPECT_EQ(toText(Value(jet::Numeric{true, 2, {0, 0, 0, 1250}})), "-12.5");
    EXPECT_EQ(toText(Value(jet::Numeric{false, 0, {0, 0, 1, 0}})), "4294967296");
    EXPECT_EQ(toText(Value(jet::Numeric{true, 3, {0, 0, 0, 0}})), "0");
}

TEST(ValueText, FlagsAreWords) {
    EXPECT_EQ(toText(Value(true)), "True");
    EXPECT_EQ(toText(Value(false)), "False");
}

TEST(ValueText, DatesAreWrittenByTheSecondAlsoBefore1900) {
    EXPECT_EQ(toText(Value(jet::DateTime{0})), "1899-12-30 00:00:00");
    EXPECT_EQ(toText(Value(jet::DateTime{-1.25})), "1899-12-29 06:00:00");
    EXPECT_EQ(toText(Value(jet::DateTime{36526.5})), "2000-01-01 12:00:00");
    EXPECT_EQ(toText(Value(jet::DateTime{45351.999999999})), "2024-03-01 00:00:00");
}

TEST(ValueText, GuidsAndBytesAreHexadecimal) {
    jet::Guid guid;
    for (std::size_t i = 0; i < guid.bytes.size(); ++i)
        guid.bytes[i] = static_cast<std::uint8_t>(0xA0 + i);
    EXPECT_EQ(toText(Value(guid)), "{A0A1A2A3-A4A5-A6A7-A8A9-AAABACADAEAF}");
    EXPECT_EQ(toText(Value(jet::Blob{0x01, 0xAB})), "01ab");
}

TEST(ValueText, NullIsAFailureOrEmpty) {
    EXPECT_EQ(failureNumber([] { (void)toText(Value()); }), 94);
    EXPECT_EQ(toTextOrEmpty(Value()), "");
    EXPECT_EQ(failureNumber([] { (void)toFlag(Value()); }), 94);
    EXPECT_FALSE(toFlagOrClear(Value()));
}

TEST(ValueText, AFlagIsAnyNumberButZeroOrTheWordTrue) {
    EXPECT_TRUE(toFlag(Value(std::int32_t{-1})));
    EXPECT_TRUE(toFlag(Value(2.5)));
    EXPECT_TRUE(toFlag(Value(jet::Money{1})));
    EXPECT_TRUE(toFlag(Value(std::string("TRUE"))));
    EXPECT_TRUE(toFlag(Value(std::string(" -1 "))));
    EXPECT_TRUE(toFlag(Value(std::string("2e308"))));
    EXPECT_FALSE(toFlag(Value(std::int32_t{0})));
    EXPECT_FALSE(toFlag(Value(std::string("0e5"))));
    EXPECT_FALSE(toFlag(Value(std::string("False"))));
    EXPECT_EQ(failureNumber([] { (void)toFlag(Value(std::string("yes, please"))); }), 13);
    EXPECT_EQ(failureNumber([] { (void)toFlag(Value(std::string())); }), 13);
}

}  // namespace
}  // namespace stelvan::db
