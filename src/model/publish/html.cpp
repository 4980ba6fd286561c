#include "model/publish/html.h"

#include <stdexcept>

#include "base/text.h"
#include "base/utf.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

/// Codes that neither HTML nor XML let a page hold.
bool isNoCharacter(char32_t c) {
    const bool control = c >= 0x80 && c <= 0x9F;
    const bool unassigned = (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
    return control || unassigned || base::isSurrogate(c);
}

/// The picture of a control character: U+2400 and on, U+2421 for the last.
void appendPicture(std::string& out, char32_t control) {
    char bytes[4];
    const char* const end = base::putUtf8(control == 0x7F ? 0x2421 : 0x2400 + control, bytes);
    out += std::string_view(bytes, end);
}

/// A character of one byte that is no line break.
void appendPlain(std::string& out, char c) {
    switch (c) {
        case '&':
            out += "&amp;";
            return;
        case '<':
            out += "&lt;";
            return;
        case '>':
            out += "&gt;";
            return;
        case '"':
            out += "&quot;";
            return;
        default:
            break;
    }
    const auto code = static_cast<unsigned char>(c);
    if (code == 0x7F || (code < 0x20 && c != '\t')) {
        appendPicture(out, code);
    } else {
        out += c;
    }
}

}  // namespace

void appendEscaped(std::string& out, std::string_view text, std::string_view lineBreak) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t c = base::nextCharacter(text, at);
        if (c >= 0x80) {
            const bool whole = !isNoCharacter(c);
            out += whole && at > start + 1 ? text.substr(start, at - start) : kReplacement;
        } else if (c == U'\n' || c == U'\r') {
            if (c == U'\r' && at < text.size() && text[at] == '\n') ++at;
            out += lineBreak;
        } else {
            appendPlain(out, static_cast<char>(c));
        }
    }
}

std::string cssString(std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    std::string out = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = base::nextCharacter(text, at);
        const char32_t shown = c == 0 || isNoCharacter(c) ? 0xFFFD : c;
        out += '\\';  // all as codes of six digits, so that nothing after them can belong to them
        for (int shift = 20; shift >= 0; shift -= 4) out += kHexDigits[(shown >> shift) & 0xF];
    }
    return out + '"';
}

Html& Html::open(std::string_view name) {
    endTag();
    out_ += '<';
    out_ += name;
    open_.push_back(name);
    inTag_ = true;
    return *this;
}

Html& Html::attribute(std::string_view name, std::string_view value) {
    if (!inTag_) throw std::logic_error("an attribute outside a tag");
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    appendEscaped(out_, value, "&#10;");
    out_ += '"';
    return *this;
}

Html& Html::attribute(std::string_view name, std::int64_t value) {
    return attribute(name, std::to_string(value));
}

Html& Html::close() {
    endTag();
    out_ += "</";
    out_ += open_.back();
    out_ += '>';
    open_.pop_back();
    flushIfLong();
    return *this;
}

Html& Html::closeEmpty() {
    out_ += "/>";
    open_.pop_back();
    inTag_ = false;
    return *this;
}

Html& Html::text(std::string_view text) {
    endTag();
    appendEscaped(out_, text, "<br/>");
    return *this;
}

Html& Html::markup(std::string_view own) {
    endTag();
    out_ += own;
    flushIfLong();
    return *this;
}

Html& Html::element(std::string_view name, std::string_view text) {
    return open(name).text(text).close();
}

Html& Html::element(std::string_view name, std::string_view cssClass, std::string_view text) {
    return open(name).attribute("class", cssClass).text(text).close();
}

void Html::finish() {
    if (!open_.empty()) throw std::logic_error("an element is open: " + std::string(open_.back()));
    sink_(out_);
    out_.clear();
}

void Html::endTag() {
    if (inTag_) out_ += '>';
    inTag_ = false;
}

void Html::flushIfLong() {
    constexpr std::size_t kEnough = 1 << 16;
    if (out_.size() < kEnough) return;
    sink_(out_);
    out_.clear();
}

}  // namespace stelvan::model
