#include "model/core/json.h"

#include <cmath>
#include <cstdint>
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

/// A character of one byte, or a byte that belongs to none.
void appendByte(std::string& out, char character) {
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
    void operator()(std::int32_t number) const { out += std::to_string(number); }
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
        const std::size_t start = at;
        const char32_t character = base::nextCharacter(text, at);
        if (at == start + 1) {
            appendByte(out, text[start]);
        } else if (base::isSurrogate(character)) {
            appendUnicodeEscape(out, character);
        } else {
            out += text.substr(start, at - start);
        }
    }
    out += '"';
}

void appendJsonValue(std::string& out, const jet::ValueView& value) {
    std::visit(AppendValue{out}, value);
}

}  // namespace stelvan::model
