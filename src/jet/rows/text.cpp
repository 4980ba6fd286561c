#include "jet/rows/text.h"

#include <cstring>

#include "base/utf.h"

namespace stelvan::jet {

namespace {

constexpr std::size_t kMarkSize = 2;  // FF FE

/// Whether all characters are U+0001 to U+007F.
bool isAscii(std::string_view text) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kHighs = 0x8080808080808080;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; end - at >= 8; at += 8) {
        std::uint64_t word;
        std::memcpy(&word, at, sizeof word);
        // A byte that is zero or above 0x7F leaves its high bit in one of the two terms.
        if (((word | (word - kOnes)) & kHighs) != 0) return false;
    }
    for (; at != end; ++at) {
        if (static_cast<signed char>(*at) <= 0) return false;
    }
    return true;
}

bool isCompressed(Bytes stored) {
    return stored.size() >= kMarkSize && stored[0] == 0xFF && stored[1] == 0xFE;
}

[[noreturn]] void throwHalfUnit() {
    throw Error(ErrorKind::Corrupt, "A stored text ends within a character.");
}

char* decodePlain(Bytes stored, char* out) {
    if (stored.size() % 2 != 0) throwHalfUnit();
    base::Utf8Writer writer(out);
    for (std::size_t i = 0; i < stored.size(); i += 2) {
        writer.put(static_cast<char32_t>(stored[i] | stored[i + 1] << 8));
    }
    return writer.finish();
}

char* decodeCompressed(Bytes stored, char* out) {
    base::Utf8Writer writer(out);
    bool wide = false;
    for (std::size_t i = 0; i < stored.size();) {
        if (stored[i] == 0) {
            wide = !wide;
            ++i;
        } else if (!wide) {
            writer.put(stored[i++]);
        } else {
            if (i + 1 >= stored.size()) throwHalfUnit();
            writer.put(static_cast<char32_t>(stored[i] | stored[i + 1] << 8));
            i += 2;
        }
    }
    return writer.finish();
}

constexpr std::size_t kLeastCompressed = 3;

bool canCompress(std::u16string_view text) {
    if (text.size() < kLeastCompressed) return false;
    for (const char16_t unit : text) {
        if (unit == 0 || unit > 0xFF) return false;
    }
    return true;
}

char32_t foldCharacter(char32_t c) {
    if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 32 : c;
    // Latin-1, Greek and Cyrillic letters stand at fixed distances from their capitals.
    if ((c >= 0xE0 && c <= 0xFE && c != 0xF7) || (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) ||
        (c >= 0x430 && c <= 0x44F)) {
        return c - 32;
    }
    if (c >= 0x450 && c <= 0x45F) return c - 80;
    if (c >= 0x100 && c <= 0x17F) {
        const bool capitalsAreOdd = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        if (c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
        if (c == 0xFF || c == 0x178) return 0x178;
        return capitalsAreOdd ? ((c & 1) != 0 ? c : c - 1) : (c & ~char32_t{1});
    }
    return c;
}

}  // namespace

std::optional<std::string_view> textInPlace(Bytes stored) {
    if (stored.empty()) return std::string_view();
    if (!isCompressed(stored)) return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(stored.data() + kMarkSize),
                                stored.size() - kMarkSize);
    if (!isAscii(text)) return std::nullopt;
    return text;
}

char* decodeText(Bytes stored, char* out) {
    if (isCompressed(stored)) return decodeCompressed(stored.subspan(kMarkSize), out);
    return decodePlain(stored, out);
}

std::string decodeText(Bytes stored) {
    std::string text(decodedBound(stored.size()), '\0');
    text.resize(static_cast<std::size_t>(decodeText(stored, text.data()) - text.data()));
    return text;
}

void encodeText(std::u16string_view text, bool compress, Blob& out) {
    if (compress && canCompress(text)) {
        out.push_back(0xFF);
        out.push_back(0xFE);
        for (const char16_t unit : text) out.push_back(static_cast<std::uint8_t>(unit));
        return;
    }
    for (const char16_t unit : text) {
        out.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        out.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
}

bool encodeAscii(std::string_view text, bool compress, Blob& out) {
    if (!isAscii(text)) return false;
    if (compress && text.size() >= kLeastCompressed) {
        out.push_back(0xFF);
        out.push_back(0xFE);
        out.insert(out.end(), text.begin(), text.end());
        return true;
    }
    const std::size_t begin = out.size();
    out.resize(begin + 2 * text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        out[begin + 2 * i] = static_cast<std::uint8_t>(text[i]);
    return true;
}

std::string foldName(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    char buffer[4];
    for (std::size_t at = 0; at < name.size();) {
        const char32_t c = foldCharacter(base::nextCharacter(name, at));
        folded.append(buffer, static_cast<std::size_t>(base::putUtf8(c, buffer) - buffer));
    }
    return folded;
}

bool sameName(std::string_view left, std::string_view right) {
    if (left == right) return true;
    return foldName(left) == foldName(right);
}

}  // namespace stelvan::jet
