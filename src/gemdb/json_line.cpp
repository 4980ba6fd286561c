#include "gemdb/json_line.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace stelvan::gemdb {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

void appendUnicodeEscape(std::string& out, unsigned codeUnit) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) out += kHexDigits[(codeUnit >> shift) & 0xF];
}

/// The code unit of a lone surrogate that starts at `at` (ED A0..BF xx), 0 where there is none.
unsigned loneSurrogate(std::string_view text, std::size_t at) {
    if (at + 2 >= text.size()) return 0;
    const auto lead = static_cast<unsigned char>(text[at]);
    const auto middle = static_cast<unsigned char>(text[at + 1]);
    const auto last = static_cast<unsigned char>(text[at + 2]);
    if (lead != 0xED || middle < 0xA0) return 0;
    return 0xD000U | ((middle & 0x3FU) << 6) | (last & 0x3FU);
}

void appendCharacter(std::string& out, char character) {
    const auto code = static_cast<unsigned char>(character);
    switch (character) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    if (code < 0x20 || code == 0x7F) {
        appendUnicodeEscape(out, code);
    } else {
        out += character;
    }
}

/// Shortest text that reads back equal; whole values of ordinary size without point and exponent.
/// JSON has no spelling for what is not finite, so that becomes a text.
template <typename Float>
void appendFloat(std::string& out, Float value) {
    if (!std::isfinite(value)) {
        out += std::isnan(value) ? "\"NaN\"" : value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
        return;
    }
    constexpr Float kPlainLimit = 1e15F;
    std::array<char, 64> digits{};
    const bool plain = value == std::trunc(value) && std::abs(value) < kPlainLimit;
    const auto end =
        plain ? std::to_chars(digits.begin(), digits.end(), static_cast<std::int64_t>(value))
              : std::to_chars(digits.begin(), digits.end(), value);
    out.append(digits.data(), end.ptr);
}

/// Decimal digits of a magnitude of four 32-bit words, most significant first.
std::string magnitudeDigits(std::array<std::uint32_t, 4> words) {
    std::string reversed;
    bool more = true;
    while (more) {
        std::uint64_t rest = 0;
        more = false;
        for (std::uint32_t& word : words) {
            const std::uint64_t part = (rest << 32) | word;
            word = static_cast<std::uint32_t>(part / 10);
            rest = part % 10;
            more = more || word != 0;
        }
        reversed += static_cast<char>('0' + rest);
    }
    return {reversed.rbegin(), reversed.rend()};
}

/// `digits` with a point before the last `scale` of them.
void appendScaled(std::string& out, bool negative, std::string digits, std::size_t scale) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0) digits.insert(digits.size() - scale, 1, '.');
    if (negative && digits.find_first_not_of("0.") != std::string::npos) out += '-';
    out += digits;
}

void appendMoney(std::string& out, jet::Money money) {
    const auto bits = static_cast<std::uint64_t>(money.scaled);
    const std::uint64_t magnitude = money.scaled < 0 ? 0 - bits : bits;
    appendScaled(out, money.scaled < 0, std::to_string(magnitude), 4);
}

/// The date as text; a number of days outside the calendar years 100 to 9999 stays a number.
void appendDate(std::string& out, jet::DateTime date) {
    constexpr double kFirst = -657434.0;
    constexpr double kEnd = 2958466.0;
    if (!(date.days >= kFirst && date.days < kEnd)) {
        appendFloat(out, date.days);
        return;
    }
    using namespace std::chrono;
    const double whole = std::trunc(date.days);
    auto day = sys_days{year{1899} / December / 30} + days{static_cast<int>(whole)};
    auto milliseconds = std::llround(std::abs(date.days - whole) * 86400000.0);
    if (milliseconds == 86400000) {
        day += days{1};
        milliseconds = 0;
    }
    const year_month_day calendar{day};
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d",
                  static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
                  static_cast<unsigned>(calendar.day()), static_cast<int>(milliseconds / 3600000),
                  static_cast<int>(milliseconds / 60000 % 60),
                  static_cast<int>(milliseconds / 1000 % 60));
    out += '"';
    out += text.data();
    if (milliseconds % 1000 != 0) {
        std::snprintf(text.data(), text.size(), ".%03d", static_cast<int>(milliseconds % 1000));
        out += text.data();
    }
    out += '"';
}

void appendBytes(std::string& out, std::span<const std::uint8_t> bytes) {
    out += '"';
    for (const std::uint8_t byte : bytes) {
        out += kHexDigits[byte >> 4];
        out += kHexDigits[byte & 0xF];
    }
    out += '"';
}

void appendGuid(std::string& out, const jet::Guid& guid) {
    constexpr std::string_view kUpperDigits = "0123456789ABCDEF";
    out += "\"{";
    for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) out += '-';
        out += kUpperDigits[guid.bytes[i] >> 4];
        out += kUpperDigits[guid.bytes[i] & 0xF];
    }
    out += "}\"";
}

struct AppendValue {
    std::string& out;
    void operator()(jet::Null) const { out += "null"; }
    void operator()(bool flag) const { out += flag ? "true" : "false"; }
    void operator()(std::int32_t number) const { out += std::to_string(number); }
    void operator()(float number) const { appendFloat(out, number); }
    void operator()(double number) const { appendFloat(out, number); }
    void operator()(jet::Money money) const { appendMoney(out, money); }
    void operator()(jet::DateTime date) const { appendDate(out, date); }
    void operator()(const jet::Numeric& number) const {
        appendScaled(out, number.negative, magnitudeDigits(number.magnitude), number.scale);
    }
    void operator()(const jet::Guid& guid) const { appendGuid(out, guid); }
    void operator()(std::string_view text) const { appendJsonText(out, text); }
    void operator()(std::span<const std::uint8_t> bytes) const { appendBytes(out, bytes); }
};

}  // namespace

void appendJsonText(std::string& out, std::string_view text) {
    out += '"';
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (const unsigned codeUnit = loneSurrogate(text, at); codeUnit != 0) {
            appendUnicodeEscape(out, codeUnit);
            at += 2;
        } else {
            appendCharacter(out, text[at]);
        }
    }
    out += '"';
}

void appendJsonValue(std::string& out, const jet::ValueView& value) {
    std::visit(AppendValue{out}, value);
}

JsonLine& JsonLine::member(std::string_view name) {
    separate();
    appendJsonText(out_, name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::text(std::string_view value) {
    separate();
    appendJsonText(out_, value);
    return *this;
}

JsonLine& JsonLine::number(long long value) {
    separate();
    out_ += std::to_string(value);
    return *this;
}

JsonLine& JsonLine::flag(bool value) {
    separate();
    out_ += value ? "true" : "false";
    return *this;
}

JsonLine& JsonLine::value(const jet::ValueView& value) {
    separate();
    appendJsonValue(out_, value);
    return *this;
}

JsonLine& JsonLine::open(char bracket) {
    separate();
    out_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::close(char bracket) {
    out_ += bracket;
    needsComma_ = true;
    return *this;
}

std::string JsonLine::take() {
    out_ += '\n';
    needsComma_ = false;
    return std::exchange(out_, std::string());
}

void JsonLine::separate() {
    if (needsComma_) out_ += ',';
    needsComma_ = true;
}

}  // namespace stelvan::gemdb
