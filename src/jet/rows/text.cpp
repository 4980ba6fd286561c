#include "jet/rows/text.h"

#include <cstring>

namespace stelvan::jet {

namespace {

constexpr std::size_t kMarkSize = 2;  // FF FE

bool isCompressed(Bytes stored) {
    return stored.size() >= kMarkSize && stored[0] == 0xFF && stored[1] == 0xFE;
}

bool isHigh(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLow(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char* putUtf8(char32_t c, char* out) {
    if (c < 0x80) {
        *out++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *out++ = static_cast<char>(0xC0 | (c >> 6));
        *out++ = static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (c >> 12));
        *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (c & 0x3F));
    } else {
        *out++ = static_cast<char>(0xF0 | (c >> 18));
        *out++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (c & 0x3F));
    }
    return out;
}

// Turns units into UTF-8 one at a time, joining surrogates that follow each other.
class Utf8Writer {
public:
    explicit Utf8Writer(char* out) : out_(out) {}
    void put(char32_t unit) {
        if (high_ != 0) {
            if (isLow(unit)) {
                out_ = putUtf8(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00), out_);
                high_ = 0;
                return;
            }
            out_ = putUtf8(high_, out_);
            high_ = 0;
        }
        if (isHigh(unit)) {
            high_ = unit;
        } else {
            out_ = putUtf8(unit, out_);
        }
    }
    char* finish() {
        if (high_ != 0) out_ = putUtf8(high_, out_);
        return out_;
    }

private:
    char* out_;
    char32_t high_ = 0;
};

[[noreturn]] void throwHalfUnit() {
    throw Error(ErrorKind::Corrupt, "A stored text ends within a character.");
}

char* decodePlain(Bytes stored, char* out) {
    if (stored.size() % 2 != 0) throwHalfUnit();
    Utf8Writer writer(out);
    for (std::size_t i = 0; i < stored.size(); i += 2) {
        writer.put(static_cast<char32_t>(stored[i] | stored[i + 1] << 8));
    }
    return writer.finish();
}

char* decodeCompressed(Bytes stored, char* out) {
    Utf8Writer writer(out);
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

// One code point of generalised UTF-8; U+FFFD and one byte on for what is none.
char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    constexpr char32_t kReplacement = 0xFFFD;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at++);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 && first < 0xF5   ? 3
                     : first >= 0xE0 && first < 0xF0 ? 2
                     : first >= 0xC2                 ? 1
                                                     : 0;
    if (more == 0 || first >= 0xF5 || at + static_cast<std::size_t>(more) > text.size())
        return kReplacement;
    char32_t c = first & (0x3F >> more);
    for (int k = 0; k < more; ++k) {
        const unsigned char b = byte(at + static_cast<std::size_t>(k));
        if ((b & 0xC0) != 0x80) return kReplacement;
        c = c << 6 | (b & 0x3F);
    }
    const char32_t least = more == 3 ? 0x10000 : more == 2 ? 0x800 : 0x80;
    if (c < least || c > 0x10FFFF) return kReplacement;
    at += static_cast<std::size_t>(more);
    return c;
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
    const std::uint8_t* at = stored.data() + kMarkSize;
    const std::uint8_t* const end = stored.data() + stored.size();
    const std::size_t size = stored.size() - kMarkSize;
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kHighs = 0x8080808080808080;
    for (; end - at >= 8; at += 8) {
        std::uint64_t word;
        std::memcpy(&word, at, sizeof word);
        // A byte that is zero or above 0x7F leaves its high bit in one of the two terms.
        if (((word | (word - kOnes)) & kHighs) != 0) return std::nullopt;
    }
    for (; at != end; ++at) {
        if (*at == 0 || *at >= 0x80) return std::nullopt;
    }
    return std::string_view(reinterpret_cast<const char*>(stored.data() + kMarkSize), size);
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

void toUtf16(std::string_view utf8, std::u16string& out) {
    out.clear();
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t c = nextCodePoint(utf8, at);
        if (c < 0x10000) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string units;
    toUtf16(utf8, units);
    return units;
}

std::string toUtf8(std::u16string_view units) {
    std::string text(3 * units.size(), '\0');
    Utf8Writer writer(text.data());
    for (const char16_t unit : units) writer.put(unit);
    text.resize(static_cast<std::size_t>(writer.finish() - text.data()));
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
    for (const char c : text) {
        if (static_cast<signed char>(c) <= 0) return false;
    }
    if (compress && text.size() >= kLeastCompressed) {
        out.push_back(0xFF);
        out.push_back(0xFE);
        out.insert(out.end(), text.begin(), text.end());
        return true;
    }
    for (const char c : text) {
        out.push_back(static_cast<std::uint8_t>(c));
        out.push_back(0);
    }
    return true;
}

std::string foldName(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    char buffer[4];
    for (std::size_t at = 0; at < name.size();) {
        const char32_t c = foldCharacter(nextCodePoint(name, at));
        folded.append(buffer, static_cast<std::size_t>(putUtf8(c, buffer) - buffer));
    }
    return folded;
}

bool sameName(std::string_view left, std::string_view right) {
    if (left == right) return true;
    return foldName(left) == foldName(right);
}

}  // namespace stelvan::jet
