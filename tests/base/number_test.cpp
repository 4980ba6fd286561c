#include "base/number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/run_time_error.h"

namespace stelvan::base {
namespace {

template <typename Convert>
int failureOf(Convert convert) {
    try {
        static_cast<void>(convert());
        return 0;
    } catch (const RunTimeError& failure) {
        return failure.number();
    }
}

int failureOfInt32(const std::string& text) {
    return failureOf([&] { return toInt32(text); });
}

TEST(NumericText, aNumberIsSignDigitsPointAndExponent) {
    for (const char* text : {"0", "12", "-3", "+4", "1.5", ".5", "5.", "1e3", "1E-3", "-1.5e+10",
                             "  7  ", "2e308", "007"}) {
        EXPECT_TRUE(isNumeric(text)) << text;
    }
}

TEST(NumericText, whatOtherProgramsMayReadAsANumberIsNone) {
    for (const char* text : {"",
                             "   ",
                             ".",
                             "+",
                             "-",
                             "e3",
                             "1e",
                             "1e+",
                             "1,000",
                             "$5",
                             "0x1F",
                             "&H1F",
                             "inf",
                             "nan",
                             "1 5",
                             "--1",
                             "1.2.3",
                             "12a",
                             "1_000",
                             "\t1",
                             "1\n",
                             "\xC2\xA0"
                             "1",
                             "\xD9\xA1"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
    }
}

TEST(NumericText, integersConvertExactlyToTheEndsOf32Bits) {
    EXPECT_EQ(toInt32("2147483647"), 2147483647);
    EXPECT_EQ(toInt32(" -2147483648 "), -2147483647 - 1);
    EXPECT_EQ(toInt32("+0012"), 12);
    EXPECT_EQ(failureOfInt32("2147483648"), 6);
    EXPECT_EQ(failureOfInt32("-2147483649"), 6);
    EXPECT_EQ(failureOfInt32("99999999999999999999999999999999"), 6);
    EXPECT_EQ(failureOfInt32("1e400"), 6);
    EXPECT_EQ(failureOfInt32("abc"), 13);
    EXPECT_EQ(failureOfInt32(""), 13);
}

TEST(NumericText, integersWithAnExponentRoundHalvesToEven) {
    EXPECT_EQ(toInt32("1e3"), 1000);
    EXPECT_EQ(toInt32("15e-1"), 2);
    EXPECT_EQ(toInt32("25e-1"), 2);
    EXPECT_EQ(toInt32("-5e-1"), 0);
    EXPECT_EQ(toInt32("1e-400"), 0);
}

TEST(NumericText, singlesOverflowAboveTheirLargestAndVanishBelowTheirSmallest) {
    EXPECT_EQ(toSingle("0.1"), 0.1f);
    EXPECT_EQ(toSingle("+3.4e38"), 3.4e38f);
    EXPECT_EQ(toSingle("3.4028235e38"), 3.4028235e38f);
    EXPECT_EQ(toSingle("1e-60"), 0.0f);
    EXPECT_EQ(toSingle("-0.00000000000000000000000000000000000000000000000000001"), 0.0f);
    EXPECT_EQ(failureOf([] { return toSingle("3.5e38"); }), 6);
    EXPECT_EQ(failureOf([] { return toSingle("-3.5e38"); }), 6);
}

TEST(NumericText, doublesOverflowAboveTheirLargestAndVanishBelowTheirSmallest) {
    EXPECT_EQ(toDouble("1.75e308"), 1.75e308);
    EXPECT_EQ(toDouble("5e-324"), 5e-324);
    EXPECT_EQ(toDouble("1e-999999999999999999999999"), 0.0);
    EXPECT_EQ(toDouble("0e999999999999999999999999"), 0.0);
    EXPECT_EQ(failureOf([] { return toDouble("2e308"); }), 6);
    EXPECT_EQ(failureOf([] { return toDouble("1e999999999999999999999999"); }), 6);
}

TEST(NumericText, decimalsCompareExactlyWhateverTheirSize) {
    const auto less = [](const char* a, const char* b) {
        return compareDecimals(a, b) < 0 && compareDecimals(b, a) > 0;
    };
    const auto same = [](const char* a, const char* b) { return compareDecimals(a, b) == 0; };
    EXPECT_TRUE(less("18446744073709551614", "18446744073709551615"));
    EXPECT_TRUE(less("0.1", "0.10000000000000000000000000000000000001"));
    EXPECT_TRUE(less("-2", "-1"));
    EXPECT_TRUE(less("-1", "0"));
    EXPECT_TRUE(less("9", "10"));
    EXPECT_TRUE(less("-10", "-9"));
    EXPECT_TRUE(less("1e5", "2e308"));
    EXPECT_TRUE(less("1e-999", "1e999"));
    EXPECT_TRUE(less("12", "12.5"));
    EXPECT_TRUE(same("5", " +5.00 "));
    EXPECT_TRUE(same("1e3", "1000"));
    EXPECT_TRUE(same("0.001", "1e-3"));
    EXPECT_TRUE(same("-0", "0.000e7"));
    EXPECT_EQ(failureOf([] { return compareDecimals("1", "x") == 0; }), 13);
}

TEST(NumberText, isTheShortestThatReadsBackEqual) {
    EXPECT_EQ(numberText(101.0), "101");
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(0.1f), "0.1");
    EXPECT_EQ(numberText(-2.5), "-2.5");
    EXPECT_EQ(numberText(0.30000000000000004), "0.30000000000000004");
    EXPECT_EQ(numberText(-0.0), "0");
    EXPECT_EQ(numberText(-0.0f), "0");
}

TEST(NumberText, hasAnExponentOnlyBelowTheFifteenthPlace) {
    EXPECT_EQ(numberText(1e20), "100000000000000000000");
    EXPECT_EQ(numberText(1e300).size(), 301U) << "whole numbers never have one";
    EXPECT_EQ(toDouble(numberText(1e300)), 1e300);
    EXPECT_EQ(numberText(0.0001), "0.0001");
    EXPECT_EQ(numberText(1e-15), "0.000000000000001");
    EXPECT_EQ(numberText(-9e-16), "-9e-16");
    EXPECT_EQ(numberText(1e-16f), "1e-16");
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(numberText(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(NumberText, isCompactWithAnExponentWhereThatIsShorter) {
    EXPECT_EQ(compactNumberText(100000.0), "100000");
    EXPECT_EQ(compactNumberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(compactNumberText(1e15), "1e+15");
    EXPECT_EQ(compactNumberText(-1e300), "-1e+300");
    EXPECT_EQ(compactNumberText(0.001), "0.001");
    EXPECT_EQ(compactNumberText(0.0001), "1e-04");
    EXPECT_EQ(compactNumberText(-0.5f), "-0.5");
    EXPECT_EQ(compactNumberText(-0.0), "0");
}

}  // namespace
}  // namespace stelvan::base
