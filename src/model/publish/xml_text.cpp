#include "model/publish/xml_text.h"

#include "base/utf.h"

namespace stelvan::model {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isXmlCharacter(char32_t c) {
    if (c < U' ') return c == U'\t' || c == U'\n' || c == U'\r';
    return !base::isSurrogate(c) && c != 0xFFFE && c != 0xFFFF;
}

}  // namespace

bool isXmlText(std::string_view text) {
    return xmlText(text) == text;
}

std::string xmlText(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = base::nextCharacter(text, at);
        char bytes[4];
        clean.append(bytes, base::putUtf8(isXmlCharacter(c) ? c : kReplacement, bytes));
    }
    return clean;
}

}  // namespace stelvan::model
