#include "base/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "base/run_time_error.h"

namespace stelvan::base {

namespace {

/// The parts of a numeric text, as written.
struct Parts {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
    std::string_view exponent;  // digits only
    bool negativeExponent = false;
};

std::string_view takeDigits(std::string_view& rest) {
    const std::size_t count = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const std::string_view digits = rest.substr(0, count);
    rest.remove_prefix(count);
    return digits;
}

/// Takes a sign if there is one; true for a minus.
bool takeSign(std::string_view& rest) {
    if (rest.empty() || (rest.front() != '+' && rest.front() != '-')) return false;
    const bool minus = rest.front() == '-';
    rest.remove_prefix(1);
    return minus;
}

std::optional<Parts> partsOf(std::string_view text) {
    std::string_view rest = trimBlanks(text);
    Parts parts;
    parts.negative = takeSign(rest);
    parts.whole = takeDigits(rest);
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        parts.fraction = takeDigits(rest);
    }
    if (parts.whole.empty() && parts.fraction.empty()) return std::nullopt;
    if (rest.starts_with('e') || rest.starts_with('E')) {
        rest.remove_prefix(1);
        parts.negativeExponent = takeSign(rest);
        parts.exponent = takeDigits(rest);
        if (parts.exponent.empty()) return std::nullopt;
    }
    if (!rest.empty()) return std::nullopt;
    return parts;
}

Parts requireParts(std::string_view text) {
    const std::optional<Parts> parts = partsOf(text);
    if (!parts) throw typeMismatch();
    return *parts;
}

/// A number as 0.d1d2d3... times a power of ten, d1 not 0; no digits for zero.
struct Scientific {
    bool negative = false;
    std::string digits;
    std::int64_t power = 0;
};

// Beyond any length that a text can make up for with its digits.
constexpr std::int64_t kHugePower = 1'000'000'000'000'000'000;

std::int64_t exponentOf(const Parts& parts) {
    std::int64_t value = 0;
    for (const char digit : parts.exponent) {
        if (value > kHugePower / 10) {
            value = kHugePower;
            break;
        }
        value = value * 10 + (digit - '0');
    }
    return parts.negativeExponent ? -value : value;
}

Scientific scientificOf(const Parts& parts) {
    Scientific number;
    number.digits = std::string(parts.whole).append(parts.fraction);
    const std::size_t first = number.digits.find_first_not_of('0');
    if (first == std::string::npos) return {};
    number.digits.erase(0, first);
    number.digits.erase(number.digits.find_last_not_of('0') + 1);
    number.negative = parts.negative;
    number.power = exponentOf(parts) + static_cast<std::int64_t>(parts.whole.size()) -
                   static_cast<std::int64_t>(first);
    return number;
}

template <typename Float>
Float toFloat(std::string_view text) {
    const Parts parts = requireParts(text);
    std::string_view digits = trimBlanks(text);
    if (digits.front() == '+') digits.remove_prefix(1);
    Float value = 0;
    const auto [stopped, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
    // Out of range may mean either end; a power of ten tells which.
    if (error == std::errc::result_out_of_range) {
        if (scientificOf(parts).power > 0) throw overflow();
        return 0;
    }
    if (std::isinf(value)) throw overflow();
    return value;
}

}  // namespace

std::string_view trimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isNumeric(std::string_view text) {
    return partsOf(text).has_value();
}

std::int32_t toInt32(std::string_view text) {
    const double rounded = std::nearbyint(toDouble(text));
    // Every 32-bit integer is exact as a double, so whole numbers come through unchanged.
    if (rounded < std::numeric_limits<std::int32_t>::min() ||
        rounded > std::numeric_limits<std::int32_t>::max()) {
        throw overflow();
    }
    return static_cast<std::int32_t>(rounded);
}

float toSingle(std::string_view text) {
    return toFloat<float>(text);
}

double toDouble(std::string_view text) {
    return toFloat<double>(text);
}

std::strong_ordering compareDecimals(std::string_view left, std::string_view right) {
    const Scientific a = scientificOf(requireParts(left));
    const Scientific b = scientificOf(requireParts(right));
    const auto signOf = [](const Scientific& n) {
        return n.digits.empty() ? 0 : n.negative ? -1 : 1;
    };
    if (const auto bySign = signOf(a) <=> signOf(b); std::is_neq(bySign)) return bySign;
    // Of two negative numbers the one of smaller size is the larger.
    const Scientific& first = a.negative ? b : a;
    const Scientific& second = a.negative ? a : b;
    if (first.power != second.power) return first.power <=> second.power;
    // Trailing zeros are gone, so comparing the digits as text compares the fractions 0.d1d2d3...
    return first.digits.compare(second.digits) <=> 0;
}

}  // namespace stelvan::base
