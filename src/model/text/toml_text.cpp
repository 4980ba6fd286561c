#include "model/text/toml_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/date.h"
#include "base/number.h"
#include "base/text.h"
#include "base/utf.h"
#include "jet/rows/value_text.h"
#include "model/core/refusal.h"
#include "model/text/layout.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

void appendUnit(std::string& out, char32_t unit) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[(unit >> shift) & 0xF];
}

/// What would not be seen, or would break the line in some program.
bool isHidden(char32_t c) {
    constexpr char32_t kLineSeparator = 0x2028;
    constexpr char32_t kParagraphSeparator = 0x2029;
    constexpr char32_t kByteOrderMark = 0xFEFF;
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == kLineSeparator || c == kParagraphSeparator ||
           c == kByteOrderMark;
}

/// A printable character of ASCII that stands for itself.
bool isOrdinary(char c) {
    return c >= ' ' && c < '\x7F' && c != '"' && c != '\\';
}

char shortEscapeOf(char32_t c) {
    switch (c) {
        case '"':
        case '\\':
            return static_cast<char>(c);
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        default:
            return '\0';
    }
}

/// Each half is three bytes of which the first is this one.
bool hasHalfPair(std::string_view text) {
    constexpr char kLeadByte = '\xED';
    if (!base::contains(text, kLeadByte)) return false;
    for (std::size_t at = 0; at < text.size();)
        if (base::isSurrogate(base::nextCharacter(text, at))) return true;
    return false;
}

/// The character at `at`, which moves behind it.
void appendCharacter(std::string& out, std::string_view text, std::size_t& at) {
    const std::size_t start = at;
    const char32_t c = base::nextCharacter(text, at);
    if (const char letter = shortEscapeOf(c); letter != '\0') {
        out += '\\';
        out += letter;
    } else if (isHidden(c)) {
        appendUnit(out, c);
    } else {
        out += text.substr(start, at - start);
    }
}

std::string escaped(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t c = base::nextCharacter(text, at);
        if (base::isSurrogate(c)) {
            appendUnit(out, c);
        } else if (c == '\\') {
            out += "\\\\";
        } else {
            out += text.substr(start, at - start);
        }
    }
    return out;
}

/// Whole numbers as such, to where every one of them is exact.
std::string numberToml(double number, const std::string& shortest) {
    constexpr double kMostWhole = 1e15;
    if (number == 0 && std::signbit(number)) return "-0.0";
    if (std::trunc(number) == number && std::abs(number) < kMostWhole)
        return std::to_string(static_cast<std::int64_t>(number));
    return shortest;
}

struct AppendValue {
    std::string& out;

    void operator()(jet::Null) const {}
    void operator()(bool flag) const { out += flag ? "true" : "false"; }
    void operator()(std::int32_t number) const { out += std::to_string(number); }
    void operator()(float number) const {
        out += numberToml(number, base::compactNumberText(number));
    }
    void operator()(double number) const {
        out += numberToml(number, base::compactNumberText(number));
    }
    void operator()(jet::Money money) const { appendDecimal(money); }
    void operator()(const jet::Numeric& number) const { appendDecimal(number); }
    void operator()(jet::DateTime date) const {
        const auto text = base::isoDateText(date.days);
        const auto same = text ? base::parseDate(*text) : std::nullopt;
        if (same == date.days && std::signbit(*same) == std::signbit(date.days)) {
            out += *text;
        } else {
            appendDays(date.days);
        }
    }
    void operator()(const jet::Guid& guid) const { appendTomlString(out, jet::textOf(guid)); }
    void operator()(const std::string& text) const {
        if (!hasHalfPair(text)) return appendTomlString(out, text);
        out += "{ ";
        out += kEscapedKey;
        out += " = ";
        appendTomlString(out, escaped(text));
        out += " }";
    }
    void operator()(const jet::Blob& bytes) const { appendTomlString(out, jet::textOf(bytes)); }

private:
    void appendDays(double days) const { (*this)(days); }
    void appendDecimal(const jet::Value& value) const {
        constexpr std::ptrdiff_t kMostDigits = 15;
        const std::string text = jet::textOf(value);
        if (std::ranges::count_if(text, base::isDigit) <= kMostDigits) {
            out += text;
        } else {
            appendTomlString(out, text);
        }
    }
};

}  // namespace

void appendTomlString(std::string& out, std::string_view text) {
    out += '"';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        while (at < text.size() && isOrdinary(text[at])) ++at;
        out += text.substr(start, at - start);
        if (at < text.size()) appendCharacter(out, text, at);
    }
    out += '"';
}

void appendTomlKey(std::string& out, std::string_view name) {
    const auto isPlain = [](char c) {
        return base::isLetter(c) || base::isDigit(c) || c == '_' || c == '-';
    };
    if (!name.empty() && std::ranges::all_of(name, isPlain)) {
        out += name;
        return;
    }
    if (hasHalfPair(name))
        throw Refusal("the name of a column holds half a character, which no text can: " +
                      escaped(name));
    appendTomlString(out, name);
}

void appendTomlValue(std::string& out, const jet::Value& value) {
    std::visit(AppendValue{out}, value);
}

bool unescape(std::string_view escaped, std::string& text) {
    constexpr std::size_t kUnitDigits = 4;
    std::u16string units;
    for (std::size_t at = 0; at < escaped.size();) {
        if (escaped[at] != '\\') {
            const std::size_t start = at;
            (void)base::nextCharacter(escaped, at);
            units += base::toUtf16(escaped.substr(start, at - start));
            continue;
        }
        const std::string_view rest = escaped.substr(at + 1);
        if (rest.starts_with('\\')) {
            units += u'\\';
            at += 2;
            continue;
        }
        if (!rest.starts_with('u') || rest.size() <= kUnitDigits) return false;
        unsigned unit = 0;
        for (const char c : rest.substr(1, kUnitDigits)) {
            const std::size_t digit = kDigits.find(base::upperCase(c));
            if (digit == std::string_view::npos) return false;
            unit = unit * 16 + static_cast<unsigned>(digit);
        }
        units += static_cast<char16_t>(unit);
        at += 2 + kUnitDigits;
    }
    text = base::toUtf8(units);
    return true;
}

}  // namespace stelvan::model
