#include "jet/rows/conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "jet/rows/decimal.h"
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

bool equalIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) {
                          return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
                      });
}

std::optional<bool> textFlag(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    const std::string_view word = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    if (equalIgnoringCase(word, "true")) return true;
    if (equalIgnoringCase(word, "false")) return false;
    const std::optional<Decimal> number = parseDecimal(word);
    return number ? std::optional(!number->digits.empty()) : std::nullopt;
}

/// The number that a value stands for, digit by digit.
Decimal decimalOf(const ColumnInfo& column, const Value& value) {
    if (const bool* flag = std::get_if<bool>(&value)) return {*flag, *flag ? "1" : "", 0};
    if (const auto* date = std::get_if<DateTime>(&value))
        return decimalOf(column, Value(date->days));
    if (std::holds_alternative<Guid>(value) || std::holds_alternative<Blob>(value))
        refuseType(column, value);
    const std::optional<Decimal> number = parseDecimal(textOf(value));
    if (!number) refuseType(column, value);
    return *number;
}

std::int64_t scaledOf(const ColumnInfo& column, const Value& value, std::size_t places) {
    const Decimal number = decimalOf(column, value);
    const std::optional<std::string> digits = number.scaled(places);
    if (!digits) refuse(column, ErrorKind::TypeMismatch, "the fraction " + textOf(value));
    const std::string text = (number.negative ? "-" : "") + *digits;
    std::int64_t result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc())
        refuse(column, ErrorKind::NumericOverflow, "a number as large as " + textOf(value));
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
    const Decimal number = decimalOf(column, value);
    const std::string text = (number.negative ? "-0." : "0.") + number.digits + "e" +
                             std::to_string(static_cast<std::int64_t>(number.digits.size()) -
                                            static_cast<std::int64_t>(number.scale));
    Float result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    const bool tooSmall = error != std::errc() && number.scale >= number.digits.size();
    if (tooSmall || number.digits.empty()) return Float{0};
    if (error != std::errc() || !std::isfinite(result)) {
        refuse(column, ErrorKind::NumericOverflow, "a number as large as " + textOf(value));
    }
    return result;
}

Value money(const ColumnInfo& column, const Value& value) {
    constexpr std::size_t kPlaces = 4;
    constexpr double kUnit = 10000;
    const float* single = std::get_if<float>(&value);
    const double* wide = std::get_if<double>(&value);
    if (single == nullptr && wide == nullptr) return Money{scaledOf(column, value, kPlaces)};
    const double units = std::nearbyint((wide ? *wide : static_cast<double>(*single)) * kUnit);
    if (!(std::abs(units) < 9.2233720368547758e18)) {
        refuse(column, ErrorKind::NumericOverflow, "a number as large as " + textOf(value));
    }
    return Money{static_cast<std::int64_t>(units)};
}

Value numeric(const ColumnInfo& column, const Value& value) {
    const Decimal number = decimalOf(column, value);
    const std::optional<std::string> digits = number.scaled(column.scale);
    if (!digits)
        refuse(column, ErrorKind::TypeMismatch, "as many places as " + textOf(value) + " has");
    if (digits->size() > column.precision && *digits != "0") {
        refuse(column, ErrorKind::NumericOverflow, "a number as large as " + textOf(value));
    }
    Numeric result{number.negative, column.scale, {}};
    for (const char digit : *digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::size_t word = result.magnitude.size(); word-- > 0;) {
            carry += static_cast<std::uint64_t>(result.magnitude[word]) * 10;
            result.magnitude[word] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    return result;
}

Value dateTime(const ColumnInfo& column, const Value& value) {
    constexpr double kFirst = -657'434;    // year 100
    constexpr double kBeyond = 2'958'466;  // year 10000
    const double days = std::get<double>(binaryFraction<double>(column, value));
    if (days <= kFirst - 1 || days >= kBeyond) {
        refuse(column, ErrorKind::NumericOverflow, "a date outside the years 100 to 9999");
    }
    return DateTime{days};
}

Value text(const ColumnInfo& column, Value value) {
    if (std::holds_alternative<Blob>(value)) refuseType(column, value);
    std::string result = std::holds_alternative<std::string>(value)
                             ? std::get<std::string>(std::move(value))
                             : textOf(value);
    if (column.type == ColumnType::Text && utf16Length(result) > column.length / 2U) {
        refuse(column, ErrorKind::TextTooLong,
               "more than " + std::to_string(column.length / 2) + " characters");
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

std::optional<std::uint8_t> hexDigit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint8_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
    return std::nullopt;
}

/// {AABBCCDD-EEFF-GGHH-IIJJ-KKLLMMNNOOPP}, as textOf writes it.
Value guid(const ColumnInfo& column, const Value& value) {
    if (std::holds_alternative<Guid>(value)) return value;
    constexpr std::string_view kForm = "{00000000-0000-0000-0000-000000000000}";
    const std::string* written = std::get_if<std::string>(&value);
    if (written == nullptr || written->size() != kForm.size()) refuseType(column, value);
    Guid result;
    std::size_t digits = 0;
    for (std::size_t at = 0; at < kForm.size(); ++at) {
        const std::optional<std::uint8_t> digit = hexDigit((*written)[at]);
        if (kForm[at] != '0' ? (*written)[at] != kForm[at] : !digit) refuseType(column, value);
        if (kForm[at] != '0') continue;
        std::uint8_t& byte = result.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | *digit);
    }
    return result;
}

Value flag(const ColumnInfo& column, const Value& value) {
    const std::optional<bool> result = flagOf(value);
    if (!result) refuseType(column, value);
    return *result;
}

}  // namespace

std::size_t utf16Length(std::string_view text) {
    std::size_t length = 0;
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        if ((byte & 0xC0) != 0x80) ++length;
        if (byte >= 0xF0) ++length;  // beyond the basic plane: two units
    }
    return length;
}

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
