// Numeric texts digit by digit, for columns that hold decimals exactly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stelvan::jet {

/// digits / 10^scale, without leading zeros and without trailing ones behind the point; no digits
/// for zero.
struct Decimal {
    bool negative = false;
    std::string digits;
    std::size_t scale = 0;

    /// The digits of the number times 10^places; nothing when that is no whole number.
    [[nodiscard]] std::optional<std::string> scaled(std::size_t places) const;
};

/// After trimming blanks: optional sign, ASCII digits with at most one point (at least one digit),
/// optionally an exponent. Exponents beyond `kLargestExponent` are held at it.
[[nodiscard]] std::optional<Decimal> parseDecimal(std::string_view text);

inline constexpr std::int64_t kLargestExponent = 400;  // beyond any column's range

}  // namespace stelvan::jet
