#include "model/core/json.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>

#include "base/date.h"
#include "base/decimal.h"
#include "base/hex.h"
#include "base/number.h"
#include "base/utf.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

void appendUnicodeEscape(std::string& out, char32_t codeUnit) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) out += kHexDigits[(codeUnit >> shift) & 0xF];
}

/// What is not written as it stands: quotes, backslashes, control characters; and the byte with
/// which half a surrogate pair begins, as other characters do.
constexpr bool needsLook(unsigned char byte) {
    return byte < 0x20 || byte == '"' || byte == '\\' || byte == 0x7F || byte == 0xED;
}

constexpr std::uint64_t inEveryByte(std::uint8_t byte) {
    return 0x0101'0101'0101'0101U * byte;
}

/// Where the first byte that needs a look stands, from `at` on; the text's size where none does.
/// Eight bytes at a time: the lowest bit of each of the sums is exact.
std::size_t endOfPlain(std::string_view text, std::size_t at) {
    constexpr std::uint64_t kHigh = inEveryByte(0x80);
    const auto zeroIn = [](std::uint64_t word) { return (word - inEveryByte(1)) & ~word & kHigh; };
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        const std::uint64_t found =
            ((word - inEveryByte(0x20)) & ~word & kHigh) | zeroIn(word ^ inEveryByte('"')) |
            zeroIn(word ^ inEveryByte('\\')) | zeroIn(word ^ inEveryByte(0x7F)) |
            zeroIn(word ^ inEveryByte(0xED));
        if (found != 0) return at + static_cast<std::size_t>(std::countr_zero(found)) / 8;
    }
    while (at < text.size() && !needsLook(static_cast<unsigned char>(text[at]))) ++at;
    return at;
}

void appendEscaped(std::string& out, char character) {
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
            appendUnicodeEscape(out, static_cast<unsigned char>(character));
    }
}

void appendNumber(std::string& out, long long number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

/// JSON has no spelling for what is not finite, so that becomes a text.
template <typename Float>
std::string floatJson(Float value) {
    if (std::isfinite(value)) return base::compactNumberText(value);
    return std::isnan(value) ? "\"NaN\"" : value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
}

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

/// The date as text; what is no date of the calendar stays a number.
std::string dateJson(jet::DateTime date) {
    const std::optional<std::string> text = base::isoDateText(date.days);
    return text ? quoted(*text) : floatJson(date.days);
}

struct AppendValue {
    std::string& out;
    void operator()(jet::Null) const { out += "null"; }
    void operator()(bool flag) const { out += flag ? "true" : "false"; }
    void operator()(std::int32_t number) const { appendNumber(out, number); }
    void operator()(float number) const { out += floatJson(number); }
    void operator()(double number) const { out += floatJson(number); }
    void operator()(jet::Money money) const {
        out += base::decimalText(money.scaled, jet::Money::kPlaces);
    }
    void operator()(jet::DateTime date) const { out += dateJson(date); }
    void operator()(const jet::Numeric& number) const {
        out += base::decimalText(number.negative, number.magnitude, number.scale);
    }
    void operator()(const jet::Guid& guid) const { out += quoted(base::guidText(guid.bytes)); }
    void operator()(std::string_view text) const { appendJsonText(out, text); }
    void operator()(std::span<const std::uint8_t> bytes) const {
        out += quoted(base::hexText(bytes));
    }
};

}  // namespace

void appendJsonText(std::string& out, std::string_view text) {
    out += '"';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t plain = endOfPlain(text, at);
        out.append(text, at, plain - at);
        at = plain;
        if (at == text.size()) break;
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            appendEscaped(out, text[at++]);
            continue;
        }
        const char32_t character = base::nextCharacter(text, at);
        if (base::isSurrogate(character)) {
            appendUnicodeEscape(out, character);
        } else {
            out.append(text, plain, at - plain);
        }
    }
    out += '"';
}

void appendJsonValue(std::string& out, const jet::ValueView& value) {
    std::visit(AppendValue{out}, value);
}

}  // namespace stelvan::model
