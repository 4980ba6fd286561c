#include "gem/formats.h"

#include <gtest/gtest.h>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

constexpr int kOverflow = -6;   // base::RunTimeError 6
constexpr int kUnchecked = -1;  // nothing to check

int outcome(const char* format, const char* text) {
    try {
        const std::optional<ErrorCode> code = checkValue(text, format);
        return code ? static_cast<int>(*code) : kUnchecked;
    } catch (const base::RunTimeError& failure) {
        return -failure.number();
    }
}

struct ValueCase {
    const char* format;
    const char* text;
    int expected;
};

class EveryFormat : public ::testing::TestWithParam<ValueCase> {};

TEST_P(EveryFormat, judgesAtBelowAndAboveItsLimits) {
    const ValueCase& c = GetParam();
    EXPECT_EQ(outcome(c.format, c.text), c.expected) << c.format << " \"" << c.text << '"';
}

const ValueCase kLimits[] = {
    // integers: at each limit, one beyond it, and far away
    {"U1", "0", 0},
    {"U1", "1", 0},
    {"U1", "254", 0},
    {"U1", "255", 0},
    {"U1", "256", 7},
    {"U1", "-1", 7},
    {"U1", "2147483647", 7},
    {"U1", "2147483648", kOverflow},
    {"U1", "-2147483649", kOverflow},
    {"U2", "0", 0},
    {"U2", "65534", 0},
    {"U2", "65535", 0},
    {"U2", "65536", 8},
    {"U2", "-1", 8},
    {"U2", "4294967296", kOverflow},
    {"U4", "0", 0},
    {"U4", "2147483646", 0},
    {"U4", "2147483647", 0},
    {"U4", "2147483648", kOverflow},
    {"U4", "4294967295", kOverflow},
    {"U4", "-1", 9},
    {"U4", "-2147483648", 9},
    {"U4", "-2147483649", kOverflow},
    {"I1", "-128", 0},
    {"I1", "-127", 0},
    {"I1", "127", 0},
    {"I1", "126", 0},
    {"I1", "128", 10},
    {"I1", "-129", 10},
    {"I1", "99999999999", kOverflow},
    {"I2", "-32768", 0},
    {"I2", "-32767", 0},
    {"I2", "32767", 0},
    {"I2", "32768", 11},
    {"I2", "-32769", 11},
    {"I2", "-3000000000", kOverflow},
    {"I4", "-2147483648", 0},
    {"I4", "-2147483647", 0},
    {"I4", "2147483647", 0},
    {"I4", "0", 0},
    {"I4", "2147483648", kOverflow},
    {"I4", "-2147483649", kOverflow},
    {"B", "0", 0},
    {"B", "255", 0},
    {"B", "256", 16},
    {"B", "-1", 16},
    {"B", "3000000000", kOverflow},
    // floating point
    {"F4", "3.4e38", 0},
    {"F4", "-3.4e38", 0},
    {"F4", "3.39e38", 0},
    {"F4", "3.402e38", 13},
    {"F4", "-3.402e38", 13},
    {"F4", "3.5e38", kOverflow},
    {"F4", "-3.5e38", kOverflow},
    {"F4", "1e-99", 0},
    {"F4", "1.5", 0},
    {"F4", "0", 0},
    {"F8", "1.7e308", 0},
    {"F8", "-1.7e308", 0},
    {"F8", "1.75e308", 14},
    {"F8", "-1.75e308", 14},
    {"F8", "2e308", kOverflow},
    {"F8", "-2e308", kOverflow},
    {"F8", "3.5e38", 0},
    {"F8", "1e-999", 0},
    {"F8", "0.1", 0},
    // words
    {"BL", "TRUE", 0},
    {"BL", "FALSE", 0},
    {"BL", "true", 0},
    {"BL", "False", 0},
    {"BL", "  tRuE ", 0},
    {"BL", "yes", 15},
    {"BL", "1", 15},
    {"BL", "TRUE FALSE", 2},
    // any text
    {"A", "x", 0},
    {"A", "two words", 0},
    {"A", "1.5", 0},
    {"A", "\xC3\xA4", 0},
};
INSTANTIATE_TEST_SUITE_P(Limits, EveryFormat, ::testing::ValuesIn(kLimits));

TEST(SecsFormat, testsRunInOrderBlankNumericPointRange) {
    for (const char* format : {"U1", "U2", "U4", "I1", "I2", "I4", "B"}) {
        EXPECT_EQ(outcome(format, "1 5"), SPACE_BETWEEN) << format;
        EXPECT_EQ(outcome(format, "a b"), SPACE_BETWEEN) << format;
        EXPECT_EQ(outcome(format, "abc"), REQUIRE_NUMERIC) << format;
        EXPECT_EQ(outcome(format, "a.b"), REQUIRE_NUMERIC) << format;
        EXPECT_EQ(outcome(format, "1.5"), REQUIRE_INTEGER) << format;
        EXPECT_EQ(outcome(format, "5.0"), REQUIRE_INTEGER) << format;
        EXPECT_EQ(outcome(format, "99999999999.5"), REQUIRE_INTEGER) << format;
        EXPECT_EQ(outcome(format, " 5 "), NO_EXCEPTION) << format;
        EXPECT_EQ(outcome(format, "1e2"), NO_EXCEPTION) << format;
    }
    for (const char* format : {"F4", "F8"}) {
        EXPECT_EQ(outcome(format, "1 5"), SPACE_BETWEEN) << format;
        EXPECT_EQ(outcome(format, "abc"), REQUIRE_NUMERIC) << format;
        EXPECT_EQ(outcome(format, "5.0"), NO_EXCEPTION) << format;
    }
}

TEST(SecsFormat, listAndEightByteIntegersAndUnknownCodesCheckNothing) {
    for (const char* format : {"L", "I8", "U8", "", "u1", "X", "U16"}) {
        EXPECT_EQ(outcome(format, "anything at all"), kUnchecked) << format;
        EXPECT_EQ(outcome(format, "99999999999999999999"), kUnchecked) << format;
    }
}

TEST(SecsFormat, blanksAloneCheckNothing) {
    for (const char* format : {"U1", "U2", "U4", "I1", "I2", "I4", "F4", "F8", "BL", "B", "A"}) {
        EXPECT_EQ(outcome(format, ""), kUnchecked) << format;
        EXPECT_EQ(outcome(format, "   "), kUnchecked) << format;
    }
}

TEST(SecsFormat, chosenFormatIsComparedTrimmedAndInUpperCase) {
    EXPECT_EQ(formatCode(" u4 "), "U4");
    EXPECT_EQ(formatCode("bl"), "BL");
    EXPECT_EQ(formatCode(""), "");
}

TEST(SecsFormat, limitsOfNumericFormatsAreNumbers) {
    for (const char* format : {"B", "F4", "F8", "I1", "I2", "I4", "I8", "U1", "U2", "U4", "U8"}) {
        EXPECT_TRUE(isNumericFormat(format)) << format;
    }
    for (const char* format : {"A", "BL", "L", "", "X"})
        EXPECT_FALSE(isNumericFormat(format)) << format;
}

TEST(SecsFormat, minimumAndMaximumCompareAsIntegers) {
    for (const char* format : {"B", "I1", "I2", "I4", "I8", "U1", "U2", "U4", "U8"}) {
        EXPECT_TRUE(minAboveMax("10", "9", format)) << format;
        EXPECT_FALSE(minAboveMax("9", "10", format)) << format;
        EXPECT_FALSE(minAboveMax("10", "10", format)) << format;
        EXPECT_THROW(static_cast<void>(minAboveMax("0", "2147483648", format)), base::RunTimeError)
            << format;
    }
}

TEST(SecsFormat, minimumAndMaximumCompareAsFloatingPointNumbers) {
    for (const char* format : {"F4", "F8"}) {
        EXPECT_TRUE(minAboveMax("1.5", "1.25", format)) << format;
        EXPECT_FALSE(minAboveMax("-3e30", "3e30", format)) << format;
        EXPECT_FALSE(minAboveMax("1.50", "1.5", format)) << format;
    }
}

TEST(SecsFormat, valuesLieWithinLimitsThatAreThere) {
    EXPECT_FALSE(outsideLimits("5", "5", "5"));
    EXPECT_TRUE(outsideLimits("4.999", "5", "10"));
    EXPECT_TRUE(outsideLimits("10.001", "5", "10"));
    EXPECT_FALSE(outsideLimits("-1", "", "10"));
    EXPECT_TRUE(outsideLimits("11", "", "10"));
    EXPECT_TRUE(outsideLimits("4", "5", ""));
    EXPECT_FALSE(outsideLimits("1000", "", ""));
    EXPECT_FALSE(outsideLimits("1000", "abc", "x"));
    EXPECT_FALSE(outsideLimits("abc", "5", "10"));
}

TEST(SecsFormat, limitsBeyond32BitsCompareExactly) {
    EXPECT_FALSE(outsideLimits("18446744073709551615", "0", "18446744073709551615"));
    EXPECT_TRUE(outsideLimits("18446744073709551616", "0", "18446744073709551615"));
}

TEST(SecsFormat, overflowCheckComparesLengthThenDigits) {
    EXPECT_FALSE(lCheckOverflow("", "1"));
    EXPECT_FALSE(lCheckOverflow("1", ""));
    EXPECT_TRUE(lCheckOverflow("9", "10"));
    EXPECT_FALSE(lCheckOverflow("10", "9"));
    EXPECT_TRUE(lCheckOverflow("256", "255"));
    EXPECT_FALSE(lCheckOverflow("254", "255"));
    EXPECT_FALSE(lCheckOverflow("255", "255"));
    EXPECT_TRUE(lCheckOverflow("300", "299"));
    EXPECT_FALSE(lCheckOverflow("199", "200"));
}

TEST(SecsFormat, hexCheckTakesRowsOfTwoDigitBytes) {
    EXPECT_TRUE(lCheckHex("0A ff 10"));
    EXPECT_TRUE(lCheckHex("00"));
    EXPECT_FALSE(lCheckHex("0A 1"));
    EXPECT_FALSE(lCheckHex("0G"));
    EXPECT_FALSE(lCheckHex(""));
    EXPECT_FALSE(lCheckHex("0A  FF"));
    EXPECT_FALSE(lCheckHex("0A "));
    EXPECT_FALSE(lCheckHex(" 0A"));
    EXPECT_FALSE(lCheckHex("0AFF"));
}

}  // namespace
}  // namespace stelvan::gem
