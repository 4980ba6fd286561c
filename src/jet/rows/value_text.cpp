#include "jet/rows/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace stelvan::jet {

namespace {

// Below this a fraction is clearer with an exponent than with a row of zeros.
constexpr double kSmallestPlain = 1e-15;
// A whole double has up to 309 digits.
constexpr std::size_t kLongestNumber = 400;

template <typename Float>
std::string floatText(Float value) {
    if (value == 0) return "0";  // also for -0
    std::array<char, kLongestNumber> buffer;
    char* const end = buffer.data() + buffer.size();
    const bool plain =
        std::isfinite(value) && std::abs(value) >= static_cast<Float>(kSmallestPlain);
    const auto result = plain ? std::to_chars(buffer.data(), end, value, std::chars_format::fixed)
                              : std::to_chars(buffer.data(), end, value);
    return {buffer.data(), result.ptr};
}

/// `digits` with a point before the last `scale` of them, without zeros that say nothing.
std::string decimalText(bool negative, std::string digits, std::size_t scale) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0) {
        digits.insert(digits.size() - scale, 1, '.');
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
    }
    return negative && digits != "0" ? "-" + digits : digits;
}

std::string moneyText(Money money) {
    constexpr std::size_t kMoneyScale = 4;
    const bool negative = money.scaled < 0;
    // Negated as unsigned, so that the smallest amount is no overflow.
    const auto bits = static_cast<std::uint64_t>(money.scaled);
    return decimalText(negative, std::to_string(negative ? 0 - bits : bits), kMoneyScale);
}

std::string magnitudeDigits(std::array<std::uint32_t, 4> words) {
    constexpr std::uint64_t kGroup = 1'000'000'000;
    constexpr std::size_t kGroupDigits = 9;
    std::string digits;
    while (std::any_of(words.begin(), words.end(), [](std::uint32_t word) { return word != 0; })) {
        std::uint64_t remainder = 0;
        for (std::uint32_t& word : words) {
            const std::uint64_t part = (remainder << 32) | word;
            word = static_cast<std::uint32_t>(part / kGroup);
            remainder = part % kGroup;
        }
        const std::string group = std::to_string(remainder);
        digits.insert(0, std::string(kGroupDigits - group.size(), '0') + group);
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.empty() ? "0" : digits;
}

/// "YYYY-MM-DD hh:mm:ss", rounded to the second: dates carry the noise of a binary fraction.
std::string dateText(DateTime date) {
    constexpr std::int64_t kSecondsOfDay = 86400;
    double day = std::trunc(date.days);
    auto seconds =
        static_cast<std::int64_t>(std::llround(std::abs(date.days - day) * kSecondsOfDay));
    day += static_cast<double>(seconds / kSecondsOfDay);
    seconds %= kSecondsOfDay;
    // Days since 0000-03-01, in eras of 400 years, so that the leap day is the last of a year.
    const std::int64_t days = static_cast<std::int64_t>(day) + 693'899;
    const std::int64_t era = (days >= 0 ? days : days - 146'096) / 146'097;
    const std::int64_t dayOfEra = days - era * 146'097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    std::array<char, 64> buffer;
    const int length = std::snprintf(
        buffer.data(), buffer.size(), "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(year),
        static_cast<int>(month), static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1),
        static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60),
        static_cast<int>(seconds % 60));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string hexText(std::span<const std::uint8_t> bytes, const char* digits) {
    std::string text;
    for (const std::uint8_t byte : bytes) text.append({digits[byte >> 4], digits[byte & 15]});
    return text;
}

std::string guidText(const Guid& guid) {
    std::string text = hexText(guid.bytes, "0123456789ABCDEF");
    for (const std::size_t at : {20u, 16u, 12u, 8u}) text.insert(at, 1, '-');
    return "{" + text + "}";
}

struct ToText {
    std::string operator()(Null) const { return {}; }
    std::string operator()(bool flag) const { return flag ? "True" : "False"; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(float number) const { return floatText(number); }
    std::string operator()(double number) const { return floatText(number); }
    std::string operator()(Money money) const { return moneyText(money); }
    std::string operator()(DateTime date) const { return dateText(date); }
    std::string operator()(const Numeric& number) const {
        return decimalText(number.negative, magnitudeDigits(number.magnitude), number.scale);
    }
    std::string operator()(const Guid& guid) const { return guidText(guid); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const Blob& bytes) const { return hexText(bytes, "0123456789abcdef"); }
};

}  // namespace

std::string textOf(const Value& value) {
    return std::visit(ToText{}, value);
}

}  // namespace stelvan::jet
