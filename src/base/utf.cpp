#include "base/utf.h"

#include <array>

namespace stelvan::base {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// How characters of several bytes begin, and the least that may be written so.
struct LeadByte {
    unsigned char first;
    unsigned char last;
    std::size_t more;
    char32_t least;
};
constexpr std::array kLeadBytes{LeadByte{0xC2, 0xDF, 1, 0x80}, LeadByte{0xE0, 0xEF, 2, 0x800},
                                LeadByte{0xF0, 0xF4, 3, 0x10000}};
constexpr char32_t kLast = 0x10FFFF;

}  // namespace

char32_t nextLongCharacter(std::string_view utf8, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned char first = byte(at++);
    for (const LeadByte& lead : kLeadBytes) {
        if (first < lead.first || first > lead.last) continue;
        if (at + lead.more > utf8.size()) return kReplacement;
        char32_t c = first & (0x3FU >> lead.more);
        for (std::size_t i = at; i < at + lead.more; ++i) {
            if ((byte(i) & 0xC0U) != 0x80U) return kReplacement;
            c = c << 6 | (byte(i) & 0x3FU);
        }
        if (c < lead.least || c > kLast) return kReplacement;
        at += lead.more;
        return c;
    }
    return kReplacement;
}

char16_t* toUtf16(std::string_view utf8, char16_t* out) {
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t c = nextCharacter(utf8, at);
        if (c < 0x10000) {
            *out++ = static_cast<char16_t>(c);
        } else {
            *out++ = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            *out++ = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return out;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string units(utf8.size(), u'\0');
    units.resize(static_cast<std::size_t>(toUtf16(utf8, units.data()) - units.data()));
    return units;
}

std::string toUtf8(std::u16string_view units) {
    std::string utf8(3 * units.size(), '\0');
    Utf8Writer writer(utf8.data());
    for (const char16_t unit : units) writer.put(unit);
    utf8.resize(static_cast<std::size_t>(writer.finish() - utf8.data()));
    return utf8;
}

std::size_t utf16Length(std::string_view utf8) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < utf8.size();) length += nextCharacter(utf8, at) < 0x10000 ? 1 : 2;
    return length;
}

}  // namespace stelvan::base
