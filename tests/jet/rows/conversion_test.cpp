#include "jet/rows/conversion.h"

#include <gtest/gtest.h>

#include <limits>

#include "jet/rows/value_text.h"

namespace stelvan::jet {
namespace {

ColumnInfo columnOf(ColumnType type, std::uint16_t length = 0) {
    ColumnInfo column;
    column.name = "col";
    column.type = type;
    column.length = length;
    return column;
}

std::optional<ErrorKind> refusal(const ColumnInfo& column, const Value& value) {
    try {
        (void)convertTo(column, value);
    } catch (const Error& error) {
        EXPECT_EQ(error.subject(), "col");
        return error.kind();
    }
    return std::nullopt;
}

TEST(Conversion, TextBecomesAWholeNumberInCNotationAfterTrimming) {
    const ColumnInfo column = columnOf(ColumnType::Long);
    EXPECT_EQ(convertTo(column, std::string(" 101 ")), Value(101));
    EXPECT_EQ(convertTo(column, std::string("+1e3")), Value(1000));
    EXPECT_EQ(convertTo(column, std::string("-2147483648")),
              Value(std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(convertTo(column, std::string("15.0")), Value(15));
    EXPECT_EQ(refusal(column, std::string("1.5")), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string("1,5")), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string("0x10")), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string("inf")), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string()), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string("2147483648")), ErrorKind::NumericOverflow);
    EXPECT_EQ(refusal(column, std::string("1e999999999999")), ErrorKind::NumericOverflow);
}

TEST(Conversion, SmallWholeNumbersKeepTheirRange) {
    EXPECT_EQ(convertTo(columnOf(ColumnType::Byte), 255), Value(255));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Byte), true), Value(255));
    EXPECT_EQ(refusal(columnOf(ColumnType::Byte), 256), ErrorKind::NumericOverflow);
    EXPECT_EQ(refusal(columnOf(ColumnType::Byte), -2), ErrorKind::NumericOverflow);
    EXPECT_EQ(convertTo(columnOf(ColumnType::Integer), true), Value(-1));
    EXPECT_EQ(refusal(columnOf(ColumnType::Integer), 40000.0), ErrorKind::NumericOverflow);
}

TEST(Conversion, NumbersBecomeFlagsByBeingOtherThanZero) {
    const ColumnInfo column = columnOf(ColumnType::Boolean);
    EXPECT_EQ(convertTo(column, 1), Value(true));
    EXPECT_EQ(convertTo(column, -1), Value(true));
    EXPECT_EQ(convertTo(column, std::string("False")), Value(false));
    EXPECT_EQ(convertTo(column, std::string("0.0")), Value(false));
    EXPECT_EQ(convertTo(column, Null{}), Value(false));
    EXPECT_EQ(refusal(column, std::string("on")), ErrorKind::TypeMismatch);
}

TEST(Conversion, FractionsTakeTheNearestValueThatTheColumnHolds) {
    EXPECT_EQ(convertTo(columnOf(ColumnType::Double), std::string("0.1")), Value(0.1));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Single), std::string("0.1")), Value(0.1F));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Double), std::string("1e-390")), Value(0.0));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Double), 7), Value(7.0));
    EXPECT_EQ(refusal(columnOf(ColumnType::Double), std::string("1e309")),
              ErrorKind::NumericOverflow);
    EXPECT_EQ(refusal(columnOf(ColumnType::Single), 1e39), ErrorKind::NumericOverflow);
}

TEST(Conversion, CurrencyAndDecimalAreExact) {
    EXPECT_EQ(convertTo(columnOf(ColumnType::Money), std::string("-3.5")), Value(Money{-35000}));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Money), 0.00004), Value(Money{0}));
    EXPECT_EQ(convertTo(columnOf(ColumnType::Money), 0.00016), Value(Money{2}));
    EXPECT_EQ(refusal(columnOf(ColumnType::Money), std::string("0.00001")),
              ErrorKind::TypeMismatch);
    ColumnInfo column = columnOf(ColumnType::Numeric);
    column.precision = 12;
    column.scale = 2;
    EXPECT_EQ(convertTo(column, std::string("-1.5")), Value(Numeric{true, 2, {0, 0, 0, 150}}));
    EXPECT_EQ(convertTo(column, std::string("4294967296")),
              Value(Numeric{false, 2, {0, 0, 100, 0}}));
    EXPECT_EQ(refusal(column, std::string("0.001")), ErrorKind::TypeMismatch);
    EXPECT_EQ(refusal(column, std::string("12345678901")), ErrorKind::NumericOverflow);
}

TEST(Conversion, TextLengthIsCountedInStoredUnits) {
    const ColumnInfo column = columnOf(ColumnType::Text, 6);
    EXPECT_EQ(convertTo(column, std::string("äöü")), Value(std::string("äöü")));
    EXPECT_EQ(convertTo(column, 101), Value(std::string("101")));
    EXPECT_EQ(refusal(column, std::string("abcd")), ErrorKind::TextTooLong);
    EXPECT_EQ(refusal(column, std::string("\xF0\x9F\x98\x80\xF0\x9F\x98\x80")),
              ErrorKind::TextTooLong);
    EXPECT_EQ(refusal(column, std::string(4, '\x80')), ErrorKind::TextTooLong)
        << "each byte is stored as one character";
    EXPECT_EQ(refusal(columnOf(ColumnType::Memo), std::string(5000, 'x')), std::nullopt);
}

TEST(Conversion, GuidsReadBackFromTheirText) {
    const Value guid = convertTo(columnOf(ColumnType::Guid),
                                 std::string("{0A1b2C3D-4e5f-6071-8293-A4B5C6D7E8F9}"));
    EXPECT_EQ(textOf(guid), "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}");
    EXPECT_EQ(refusal(columnOf(ColumnType::Guid), std::string("{0A}")), ErrorKind::TypeMismatch);
}

TEST(Conversion, BytesAndDatesAcceptTheirOwn) {
    EXPECT_EQ(refusal(columnOf(ColumnType::Binary, 2), Blob{1, 2, 3}), ErrorKind::TextTooLong);
    EXPECT_EQ(refusal(columnOf(ColumnType::Ole), std::string("x")), ErrorKind::TypeMismatch);
    EXPECT_EQ(convertTo(columnOf(ColumnType::DateTime), 1.5), Value(DateTime{1.5}));
    EXPECT_EQ(refusal(columnOf(ColumnType::DateTime), 3e6), ErrorKind::NumericOverflow);
}

}  // namespace
}  // namespace stelvan::jet
