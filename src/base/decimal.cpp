#include "base/decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.h"

namespace stelvan::base {

namespace {

// Beyond any length that a text can make up for with its digits.
constexpr std::int64_t kHugePower = 1'000'000'000'000'000'000;

std::string_view takeDigits(std::string_view& rest) {
    const auto end = std::ranges::find_if_not(rest, isDigit);
    const std::string_view digits = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(digits.size());
    return digits;
}

/// Takes a sign if there is one; true for a minus.
bool takeSign(std::string_view& rest) {
    if (rest.empty() || (rest.front() != '+' && rest.front() != '-')) return false;
    const bool minus = rest.front() == '-';
    rest.remove_prefix(1);
    return minus;
}

/// Takes "e" with sign and digits; nothing when it is malformed, 0 when there is none.
std::optional<std::int64_t> takeExponent(std::string_view& rest) {
    if (rest.empty() || upperCase(rest.front()) != 'E') return 0;
    rest.remove_prefix(1);
    const bool negative = takeSign(rest);
    const std::string_view digits = takeDigits(rest);
    if (digits.empty()) return std::nullopt;
    std::int64_t value = kHugePower;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);  // or it stays huge
    value = std::min(value, kHugePower);
    return negative ? -value : value;
}

/// Takes away the zeros at both ends; `power` is where the point stands among all digits.
Decimal normalised(bool negative, std::string digits, std::int64_t power) {
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) return {};
    digits.erase(digits.find_last_not_of('0') + 1);
    digits.erase(0, first);
    return {negative, std::move(digits), power - static_cast<std::int64_t>(first)};
}

std::string digitsOf(Magnitude whole) {
    constexpr std::uint64_t kGroup = 1'000'000'000;
    constexpr std::size_t kGroupDigits = 9;
    std::string digits;
    while (whole != Magnitude{}) {
        std::uint64_t remainder = 0;
        for (std::uint32_t& word : whole) {
            const std::uint64_t part = (remainder << 32) | word;
            word = static_cast<std::uint32_t>(part / kGroup);
            remainder = part % kGroup;
        }
        const std::string group = std::to_string(remainder);
        digits.insert(0, std::string(kGroupDigits - group.size(), '0') + group);
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

std::string withPoint(bool negative, std::string digits, std::size_t places) {
    const bool isZero = digits.find_first_not_of('0') == std::string::npos;
    if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
    if (places > 0) digits.insert(digits.size() - places, 1, '.');
    return negative && !isZero ? "-" + digits : digits;
}

}  // namespace

std::optional<std::string> Decimal::scaled(std::size_t places) const {
    if (digits.empty()) return "0";
    const std::int64_t size = power + static_cast<std::int64_t>(places);
    if (size < static_cast<std::int64_t>(digits.size())) return std::nullopt;
    std::string whole = digits;
    whole.resize(std::min(static_cast<std::size_t>(size), kMostDigits), '0');
    return whole;
}

std::strong_ordering operator<=>(const Decimal& left, const Decimal& right) {
    const auto signOf = [](const Decimal& n) { return n.digits.empty() ? 0 : n.negative ? -1 : 1; };
    if (const auto bySign = signOf(left) <=> signOf(right); std::is_neq(bySign)) return bySign;
    // Of two negative numbers the one of smaller size is the larger.
    const Decimal& first = left.negative ? right : left;
    const Decimal& second = left.negative ? left : right;
    if (first.power != second.power) return first.power <=> second.power;
    // Without trailing zeros, comparing the digits as text compares the fractions 0.d1d2d3...
    return first.digits.compare(second.digits) <=> 0;
}

std::optional<Decimal> parseDecimal(std::string_view text) {
    std::string_view rest = trimBlanks(text);
    const bool negative = takeSign(rest);
    std::string digits(takeDigits(rest));
    const auto whole = static_cast<std::int64_t>(digits.size());
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        digits += takeDigits(rest);
    }
    const std::optional<std::int64_t> exponent = takeExponent(rest);
    if (digits.empty() || !exponent || !rest.empty()) return std::nullopt;
    return normalised(negative, std::move(digits), *exponent + whole);
}

template <typename Float>
std::optional<Float> nearest(const Decimal& number) {
    if (number.digits.empty()) return Float{0};
    const std::string text =
        (number.negative ? "-0." : "0.") + number.digits + "e" + std::to_string(number.power);
    Float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    // Out of range may mean either end; the power of ten tells which.
    const bool outside = error == std::errc::result_out_of_range;
    if (outside && number.power <= 0) return Float{0};
    if (outside || std::isinf(value)) return std::nullopt;
    return value;
}

template std::optional<float> nearest(const Decimal& number);
template std::optional<double> nearest(const Decimal& number);

Magnitude magnitudeOf(std::string_view digits) {
    Magnitude whole{};
    for (const char digit : digits) {
        auto carry = static_cast<std::uint64_t>(digit - '0');
        for (std::size_t word = whole.size(); word-- > 0;) {
            carry += static_cast<std::uint64_t>(whole[word]) * 10;
            whole[word] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    return whole;
}

std::string decimalText(std::int64_t whole, std::size_t places) {
    // Negated as unsigned, so that the smallest number is no overflow.
    const auto bits = static_cast<std::uint64_t>(whole);
    return withPoint(whole < 0, std::to_string(whole < 0 ? 0 - bits : bits), places);
}

std::string decimalText(bool negative, const Magnitude& whole, std::size_t places) {
    const std::string digits = digitsOf(whole);
    return withPoint(negative, digits.empty() ? "0" : digits, places);
}

std::string withoutIdleZeros(std::string decimal) {
    if (!contains(decimal, '.')) return decimal;
    decimal.erase(decimal.find_last_not_of('0') + 1);
    if (decimal.back() == '.') decimal.pop_back();
    return decimal;
}

}  // namespace stelvan::base
