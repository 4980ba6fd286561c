#include "jet/rows/decimal.h"

#include <algorithm>

namespace stelvan::jet {

namespace {

constexpr std::string_view kDigits = "0123456789";

std::string_view takeDigits(std::string_view& rest) {
    const std::string_view digits =
        rest.substr(0, std::min(rest.find_first_not_of(kDigits), rest.size()));
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
    if (rest.empty() || (rest.front() != 'e' && rest.front() != 'E')) return 0;
    rest.remove_prefix(1);
    const bool negative = takeSign(rest);
    const std::string_view digits = takeDigits(rest);
    if (digits.empty()) return std::nullopt;
    std::int64_t value = 0;
    for (const char digit : digits) value = std::min(value * 10 + (digit - '0'), kLargestExponent);
    return negative ? -value : value;
}

void applyExponent(Decimal& number, std::int64_t exponent) {
    const std::int64_t scale = static_cast<std::int64_t>(number.scale) - exponent;
    if (scale < 0) number.digits.append(static_cast<std::size_t>(-scale), '0');
    number.scale = static_cast<std::size_t>(std::max<std::int64_t>(scale, 0));
}

void normalise(Decimal& number) {
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    if (number.digits.empty()) {
        number = {};
        return;
    }
    while (number.scale > 0 && number.digits.back() == '0') {
        number.digits.pop_back();
        --number.scale;
    }
}

}  // namespace

std::optional<std::string> Decimal::scaled(std::size_t places) const {
    if (scale > places) return std::nullopt;
    return digits.empty() ? std::string("0") : digits + std::string(places - scale, '0');
}

std::optional<Decimal> parseDecimal(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    std::string_view rest = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    Decimal number;
    number.negative = takeSign(rest);
    number.digits = takeDigits(rest);
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        const std::string_view fraction = takeDigits(rest);
        number.scale = fraction.size();
        number.digits.append(fraction);
    }
    const std::optional<std::int64_t> exponent = takeExponent(rest);
    if (number.digits.empty() || !exponent || !rest.empty()) return std::nullopt;
    applyExponent(number, *exponent);
    normalise(number);
    return number;
}

}  // namespace stelvan::jet
