// Texts as numbers: what counts as numeric, and the conversions to 32-bit integer, single and
// double.
//
// The same everywhere (fields, SQL, command line), never by locale. "Numeric" is a matter of form:
// 2e308 is numeric although no double holds it; converting it is an overflow. A blank is U+0020
// alone.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace stelvan::base {

/// `text` without leading and trailing blanks.
[[nodiscard]] std::string_view trimBlanks(std::string_view text);

/// After trimming: optional sign, ASCII digits with at most one point (at least one digit),
/// optionally e or E with sign and digits.
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

}  // namespace stelvan::base
