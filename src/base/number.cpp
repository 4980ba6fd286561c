#include "base/number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "base/decimal.h"
#include "base/run_time_error.h"

namespace stelvan::base {

namespace {

Decimal requireDecimal(std::string_view text) {
    std::optional<Decimal> number = parseDecimal(text);
    if (!number) throw typeMismatch();
    return *std::move(number);
}

template <typename Float>
Float requireInRange(std::optional<Float> value) {
    if (!value) throw overflow();
    return *value;
}

template <typename Float>
std::string textOf(Float number, bool plain) {
    if (number == 0) return "0";           // also for -0
    constexpr std::size_t kLongest = 400;  // a whole double has up to 309 digits
    std::array<char, kLongest> buffer;
    char* const end = buffer.data() + buffer.size();
    const auto result = plain ? std::to_chars(buffer.data(), end, number, std::chars_format::fixed)
                              : std::to_chars(buffer.data(), end, number);
    return {buffer.data(), result.ptr};
}

template <typename Float>
std::string plainText(Float number) {
    // Below this a fraction is clearer with an exponent than with a row of zeros.
    constexpr double kSmallestPlain = 1e-15;
    return textOf(number,
                  std::isfinite(number) && std::abs(number) >= static_cast<Float>(kSmallestPlain));
}

template <typename Float>
std::string compactText(Float number) {
    constexpr Float kPlainLimit = 1e15F;
    return textOf(number, number == std::trunc(number) && std::abs(number) < kPlainLimit);
}

}  // namespace

bool isNumeric(std::string_view text) {
    return parseDecimal(text).has_value();
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
    return requireInRange(nearest<float>(requireDecimal(text)));
}

double toDouble(std::string_view text) {
    return requireInRange(nearest<double>(requireDecimal(text)));
}

std::strong_ordering compareDecimals(std::string_view left, std::string_view right) {
    return requireDecimal(left) <=> requireDecimal(right);
}

std::string numberText(float number) {
    return plainText(number);
}

std::string numberText(double number) {
    return plainText(number);
}

std::string compactNumberText(float number) {
    return compactText(number);
}

std::string compactNumberText(double number) {
    return compactText(number);
}

}  // namespace stelvan::base
