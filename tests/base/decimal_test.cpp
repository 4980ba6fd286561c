#include "base/decimal.h"

#include <gtest/gtest.h>

#include <limits>

namespace stelvan::base {
namespace {

Decimal decimal(std::string_view text) {
    return parseDecimal(text).value();
}

TEST(Decimal, HasNoZerosAtItsEnds) {
    struct Row {
        const char* text;
        Decimal number;
    };
    const Row rows[] = {
        {"0", {}},
        {"-0.00e7", {}},
        {"12", {false, "12", 2}},
        {"-3", {true, "3", 1}},
        {" +00120 ", {false, "12", 3}},
        {"0.0450", {false, "45", -1}},
        {".5", {false, "5", 0}},
        {"5.", {false, "5", 1}},
        {"1e3", {false, "1", 4}},
        {"1.5E-3", {false, "15", -2}},
        {"2e308", {false, "2", 309}},
        {"1e+99999999999999999999999", {false, "1", 1'000'000'000'000'000'001}},
        {"1e-99999999999999999999999", {false, "1", -999'999'999'999'999'999}},
    };
    for (const Row& row : rows) EXPECT_EQ(decimal(row.text), row.number) << row.text;
}

TEST(Decimal, IsNothingForATextThatIsNotNumeric) {
    for (const char* text : {"", " ", ".", "-", "e3", "1e", "1e+", "1 5", "0x1F", "inf", "\t1"})
        EXPECT_FALSE(parseDecimal(text)) << text;
}

TEST(Decimal, IsScaledToAWholeNumberOrNotAtAll) {
    struct Row {
        const char* text;
        std::size_t places;
        std::optional<std::string> digits;
    };
    const Row rows[] = {
        {"0", 4, "0"},     {"1.5", 4, "15000"}, {"-1.5", 1, "15"},
        {"1.5", 0, {}},    {"0.0001", 4, "1"},  {"0.0001", 3, {}},
        {"1e-400", 4, {}}, {"1200", 0, "1200"}, {"12345678901234567890", 0, "12345678901234567890"},
        {"1.50", 1, "15"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(decimal(row.text).scaled(row.places), row.digits) << row.text;
    EXPECT_EQ(decimal("1e999999999999").scaled(0)->size(), Decimal::kMostDigits);
}

TEST(Decimal, HasANearestSingleAndDouble) {
    EXPECT_EQ(nearest<float>(decimal("0.1")), 0.1F);
    EXPECT_EQ(nearest<double>(decimal("0.1")), 0.1);
    EXPECT_EQ(nearest<double>(decimal("-123456789012345678")), -123456789012345678.0);
    EXPECT_EQ(nearest<double>(decimal("5e-324")), 5e-324);
    EXPECT_EQ(nearest<float>(decimal("3.4028235e38")), std::numeric_limits<float>::max());
    for (const char* tooSmall : {"0", "1e-400", "1e-99999999999999999999", "-1e-400"})
        EXPECT_EQ(nearest<double>(decimal(tooSmall)), 0.0) << tooSmall;
    for (const char* tooLarge : {"2e308", "-2e308", "1e99999999999999999999"})
        EXPECT_FALSE(nearest<double>(decimal(tooLarge))) << tooLarge;
    EXPECT_EQ(nearest<float>(decimal("1e-60")), 0.0F);
    EXPECT_FALSE(nearest<float>(decimal("3.5e38")));
    const std::string manyPlaces = "0." + std::string(500, '0') + "5e501";
    EXPECT_EQ(nearest<double>(decimal(manyPlaces)), 5.0);
}

TEST(Decimal, OfWholeNumbersIsWrittenWithAllItsPlaces) {
    EXPECT_EQ(decimalText(35000, 4), "3.5000");
    EXPECT_EQ(decimalText(-1, 4), "-0.0001");
    EXPECT_EQ(decimalText(0, 4), "0.0000");
    EXPECT_EQ(decimalText(-70, 0), "-70");
    EXPECT_EQ(decimalText(INT64_MIN, 4), "-922337203685477.5808");
    EXPECT_EQ(decimalText(true, {0, 0, 0, 1500}, 3), "-1.500");
    EXPECT_EQ(decimalText(true, {}, 2), "0.00");
    EXPECT_EQ(decimalText(false, {}, 0), "0");
    EXPECT_EQ(decimalText(false, {0, 1, 0, 0}, 0), "18446744073709551616");
    EXPECT_EQ(decimalText(false, {0, 0, 0, 1'000'000'000}, 0), "1000000000");
    EXPECT_EQ(decimalText(false, {0, 0, 0, 7}, 28), "0.0000000000000000000000000007");
    constexpr std::uint32_t kAll = 0xFFFFFFFF;
    EXPECT_EQ(decimalText(false, {kAll, kAll, kAll, kAll}, 0),
              "340282366920938463463374607431768211455");
}

TEST(Decimal, DigitsAreReadAsAMagnitude) {
    for (const char* digits : {"0", "1", "4294967295", "4294967296", "18446744073709551616",
                               "340282366920938463463374607431768211455"}) {
        EXPECT_EQ(decimalText(false, magnitudeOf(digits), 0), digits);
    }
    EXPECT_EQ(magnitudeOf("4294967298"), (Magnitude{0, 0, 1, 2}));
}

TEST(Decimal, LosesOnlyZerosThatSayNothing) {
    EXPECT_EQ(withoutIdleZeros("1.500"), "1.5");
    EXPECT_EQ(withoutIdleZeros("100.00"), "100");
    EXPECT_EQ(withoutIdleZeros("0.0000"), "0");
    EXPECT_EQ(withoutIdleZeros("100"), "100");
    EXPECT_EQ(withoutIdleZeros("-0.0010"), "-0.001");
}

}  // namespace
}  // namespace stelvan::base
