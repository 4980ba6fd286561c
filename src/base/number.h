// Numbers and their texts: the conversions to 32-bit integer, single and double, and back.
//
// The same everywhere (fields, SQL, command line), never by locale. What counts as numeric is said
// in base/decimal.h; converting a numeric text that is too large is an overflow.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace stelvan::base {

[[nodiscard]] bool isNumeric(std::string_view text);

/// Whole numbers convert exactly; with a point or an exponent the value is rounded, halves to even.
/// RunTimeError 6 outside the signed 32-bit range, 13 when not numeric.
[[nodiscard]] std::int32_t toInt32(std::string_view text);

/// Correctly rounded; too small is 0. RunTimeError 6 when too large, 13 when not numeric.
[[nodiscard]] float toSingle(std::string_view text);
[[nodiscard]] double toDouble(std::string_view text);

/// Compares two numeric texts digit by digit, whatever their size. RunTimeError 13 when not
/// numeric.
[[nodiscard]] std::strong_ordering compareDecimals(std::string_view left, std::string_view right);

/// Whole numbers with all their digits, fractions in the shortest form that reads back equal, those
/// below 1e-15 with an exponent; "inf" and "nan" for what is no number. -0 is "0".
[[nodiscard]] std::string numberText(float number);
[[nodiscard]] std::string numberText(double number);

/// The shortest form that reads back equal, with an exponent where that is shorter and for whole
/// numbers from 1e15 on.
[[nodiscard]] std::string compactNumberText(float number);
[[nodiscard]] std::string compactNumberText(double number);

}  // namespace stelvan::base
