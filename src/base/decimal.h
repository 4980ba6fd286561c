// Decimal numbers, digit by digit and of any size: what counts as numeric, and decimals as texts.
//
// A numeric text is, after trimming blanks: an optional sign, ASCII digits with at most one point
// (at least one digit), optionally e or E with sign and digits. That is a matter of form: 2e308 is
// numeric although no double holds it. Never by locale.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stelvan::base {

/// 0.d1d2d3... times 10^power; neither the first nor the last digit is 0. Zero has no digits, no
/// sign and the power 0.
struct Decimal {
    bool negative = false;
    std::string digits;
    std::int64_t power = 0;

    /// The digits of the number times 10^places, "0" for zero; nothing when that is no whole
    /// number. Of more than kMostDigits digits only the first are given.
    [[nodiscard]] std::optional<std::string> scaled(std::size_t places) const;
    static constexpr std::size_t kMostDigits = 400;  // no binary fraction is as large

    friend bool operator==(const Decimal&, const Decimal&) = default;
    friend std::strong_ordering operator<=>(const Decimal& left, const Decimal& right);
};

/// Nothing for a text that is not numeric. Exponents beyond 10^18 count as that.
[[nodiscard]] std::optional<Decimal> parseDecimal(std::string_view text);

/// The nearest value, correctly rounded; what is too small is 0. Nothing when it is too large.
template <typename Float>  // float or double
[[nodiscard]] std::optional<Float> nearest(const Decimal& number);

/// A whole number of up to 128 bits, most significant word first.
using Magnitude = std::array<std::uint32_t, 4>;

/// Of a row of digits; its lowest 128 bits where they are more.
[[nodiscard]] Magnitude magnitudeOf(std::string_view digits);

/// A whole number with a point before its last `places` digits, all of them written: 1500 with 3 is
/// "1.500". Zero has no sign.
[[nodiscard]] std::string decimalText(std::int64_t whole, std::size_t places);
[[nodiscard]] std::string decimalText(bool negative, const Magnitude& whole, std::size_t places);

/// Without the zeros behind a point that say nothing: "1.500" is "1.5", "100" stays.
[[nodiscard]] std::string withoutIdleZeros(std::string decimal);

}  // namespace stelvan::base
