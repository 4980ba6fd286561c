#include "jet/rows/conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/date.h"
#include "base/decimal.h"
#include "base/hex.h"
#include "base/number.h"
#include "base/text.h"
#include "base/utf.h"
#include "jet/rows/value_text.h"

namespace stelvan::jet {

namespace {

[[noreturn]] void refuse(const ColumnInfo& column, ErrorKind kind, const std::string& why) {
    throw Error(kind, "The column " + column.name + " cannot take " + why + ".").about(column.name);
}

[[noreturn]] void refuseType(const ColumnInfo& column, const Value& value) {
    const std::string* text = std::get_if<std::string>(&value);
    refuse(column, ErrorKind::TypeMismatch,
           text ? "the text '" + *text + "'" : "a value of this type");
}

std::optional<bool> textFlag(std::string_view text) {
    const std::string_view word = base::trimBlanks(text);
    if (base::sameWord(word, "True")) return true;
    if (base::sameWord(word, "False")) return false;
    const std::optional<base::Decimal> number = base::parseDecimal(word);
    return number ? std::optional(!number->digits.empty()) : std::nullopt;
}

/// What a value is as a numeric text, if it is one.
std::string numericTextOf(const Value& value) {
    if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "-1" : "0";
    if (const auto* date = std::get_if<DateTime>(&value)) return base::numberText(date->days);
    return textOf(value);
}

/// The number that a value stands for, digit by digit.
base::Decimal decimalOf(const ColumnInfo& column, const Value& value) {
    if (std::holds_alternative<Guid>(value) || std::holds_alternative<Blob>(value))
        refuseType(column, value);
    const std::optional<base::Decimal> number = base::parseDecimal(numericTextOf(value));
    if (!number) refuseType(column, value);
    return *number;
}

[[noreturn]] void refuseSize(const ColumnInfo& column, const Value& value) {
    refuse(column, ErrorKind::NumericOverflow, "a number as large as " + textOf(value));
}

std::int64_t scaledOf(const ColumnInfo& column, const Value& value, std::size_t places) {
    const base::Decimal number = decimalOf(column, value);
    const std::optional<std::string> digits = number.scaled(places);
    if (!digits) refuse(column, ErrorKind::TypeMismatch, "the fraction " + textOf(value));
    const std::string text = (number.negative ? "-" : "") + *digits;
    std::int64_t result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc()) refuseSize(column, value);
    return result;
}

template <typename Stored>
Value wholeNumber(const ColumnInfo& column, const Value& value) {
    const auto* number = std::get_if<std::int32_t>(&value);
    std::int64_t whole = number ? *number : scaledOf(column, value, 0);
    // True is -1, all bits set; in a byte that is 255.
    if (std::is_unsigned_v<Stored> && whole == -1) whole = std::numeric_limits<Stored>::max();
    if (!std::in_range<Stored>(whole)) {
        refuse(column, ErrorKind::NumericOverflow,
               "the number " + textOf(value) + ", which is out of its range");
    }
    return static_cast<std::int32_t>(whole);
}

/// The nearest value; what is too small becomes 0.
template <typename Float>
Value binaryFraction(const ColumnInfo& column, const Value& value) {
    const base::Decimal number = decimalOf(column, value);
    const std::optional<Float> result = base::nearest<Float>(number);
    if (!result) refuseSize(column, value);
    return *result;
}

Value money(const ColumnInfo& column, const Value& value) {
    constexpr double kUnit = 10000;
    const float* single = std::get_if<float>(&value);
    const double* wide = std::get_if<double>(&value);
    if (single == nullptr && wide == nullptr) return Money{scaledOf(column, value, Money::kPlaces)};
    const double units = std::nearbyint((wide ? *wide : static_cast<double>(*single)) * kUnit);
    if (!(std::abs(units) < 9.2233720368547758e18)) refuseSize(column, value);
    return Money{static_cast<std::int64_t>(units)};
}

Value numeric(const ColumnInfo& column, const Value& value) {
    const base::Decimal number = decimalOf(column, value);
    const std::optional<std::string> digits = number.scaled(column.scale);
    if (!digits)
        refuse(column, ErrorKind::TypeMismatch, "as many places as " + textOf(value) + " has");
    if (digits->size() > column.precision && *digits != "0") refuseSize(column, value);
    return Numeric{number.negative, column.scale, base::magnitudeOf(*digits)};
}

/// A text that is a date to the day or to the second, with a blank or T in the middle.
std::optional<double> isoDate(const Value& value) {
    const std::string* text = std::get_if<std::string>(&value);
    if (text == nullptr) return std::nullopt;
    const std::string_view written = base::trimBlanks(*text);
    const std::optional<double> day = base::parseDate(std::string(written) + " 00:00:00");
    return day ? day : base::parseDate(written);
}

Value dateTime(const ColumnInfo& column, const Value& value) {
    if (const std::optional<double> date = isoDate(value)) return DateTime{*date};
    const double days = std::get<double>(binaryFraction<double>(column, value));
    if (!base::isCalendarDate(days)) {
        refuse(column, ErrorKind::NumericOverflow, "a date outside the years 100 to 9999");
    }
    return DateTime{days};
}

Value text(const ColumnInfo& column, Value value) {
    if (std::holds_alternative<Blob>(value)) refuseType(column, value);
    std::string result = std::holds_alternative<std::string>(value)
                             ? std::get<std::string>(std::move(value))
                             : textOf(value);
    // No text has more units than bytes, so most need not be counted.
    const std::size_t limit = column.length / 2U;
    if (column.type == ColumnType::Text && result.size() > limit &&
        base::utf16Length(result) > limit) {
        refuse(column, ErrorKind::TextTooLong,
               "more than " + std::to_string(limit) + " characters");
    }
    return result;
}

Value bytes(const ColumnInfo& column, Value value) {
    const Blob* blob = std::get_if<Blob>(&value);
    if (blob == nullptr) refuseType(column, value);
    if (column.type != ColumnType::Ole && blob->size() > column.length) {
        refuse(column, ErrorKind::TextTooLong,
               "more than " + std::to_string(column.length) + " bytes");
    }
    return value;
}

Value guid(const ColumnInfo& column, const Value& value) {
    if (std::holds_alternative<Guid>(value)) return value;
    const std::string* written = std::get_if<std::string>(&value);
    const std::optional<base::GuidBytes> bytes =
        written == nullptr ? std::nullopt : base::parseGuid(*written);
    if (!bytes) refuseType(column, value);
    return Guid{*bytes};
}

Value flag(const ColumnInfo& column, const Value& value) {
    const std::optional<bool> result = flagOf(value);
    if (!result) refuseType(column, value);
    return *result;
}

}  // namespace

std::optional<bool> flagOf(const Value& value) {
    struct Flag {
        std::optional<bool> operator()(bool set) const { return set; }
        std::optional<bool> operator()(std::int32_t number) const { return number != 0; }
        std::optional<bool> operator()(float number) const { return number != 0; }
        std::optional<bool> operator()(double number) const { return number != 0; }
        std::optional<bool> operator()(Money amount) const { return amount.scaled != 0; }
        std::optional<bool> operator()(DateTime date) const { return date.days != 0; }
        std::optional<bool> operator()(const Numeric& number) const {
            return number.magnitude != std::array<std::uint32_t, 4>{};
        }
        std::optional<bool> operator()(const std::string& text) const { return textFlag(text); }
        std::optional<bool> operator()(Null) const { return std::nullopt; }
        std::optional<bool> operator()(const Guid&) const { return std::nullopt; }
        std::optional<bool> operator()(const Blob&) const { return std::nullopt; }
    };
    return std::visit(Flag{}, value);
}

Value convertTo(const ColumnInfo& column, Value value) {
    if (isNull(value)) return column.type == ColumnType::Boolean ? Value(false) : value;
    switch (column.type) {
        case ColumnType::Boolean:
            return flag(column, value);
        case ColumnType::Byte:
            return wholeNumber<std::uint8_t>(column, value);
        case ColumnType::Integer:
            return wholeNumber<std::int16_t>(column, value);
        case ColumnType::Long:
            return wholeNumber<std::int32_t>(column, value);
        case ColumnType::Money:
            return std::holds_alternative<Money>(value) ? value : money(column, value);
        case ColumnType::Single:
            return std::holds_alternative<float>(value) ? value
                                                        : binaryFraction<float>(column, value);
        case ColumnType::Double:
            return std::holds_alternative<double>(value) ? value
                                                         : binaryFraction<double>(column, value);
        case ColumnType::DateTime:
            return std::holds_alternative<DateTime>(value) ? value : dateTime(column, value);
        case ColumnType::Numeric:
            return numeric(column, value);
        case ColumnType::Text:
        case ColumnType::Memo:
            return text(column, std::move(value));
        case ColumnType::Guid:
            return guid(column, value);
        case ColumnType::Binary:
        case ColumnType::FixedBinary:
        case ColumnType::Ole:
            return bytes(column, std::move(value));
    }
    refuseType(column, value);
}

Value convertTo(const TableInfo& table, std::size_t column, Value value) {
    try {
        return convertTo(table.columns[column], std::move(value));
    } catch (Error& error) {
        error.about(table.name + "." + table.columns[column].name);
        throw;
    }
}

}  // namespace stelvan::jet
