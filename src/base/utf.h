// UTF-8 and UTF-16, both ways and without loss.
//
// UTF-8 is meant in its general form: half a surrogate pair, as some files hold, travels as the
// three bytes of its unit and comes back as it was. Two halves that follow each other become the
// one character that they are. A byte that belongs to no character becomes U+FFFD, each one for
// itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace stelvan::base {

[[nodiscard]] constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
[[nodiscard]] constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
[[nodiscard]] constexpr bool isSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

/// Writes `c` to `out` (room for 4) and gives the end.
inline char* putUtf8(char32_t c, char* out) {
    const auto trail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        *out++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *out++ = static_cast<char>(0xC0 | (c >> 6));
        *out++ = trail(0);
    } else if (c < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (c >> 12));
        *out++ = trail(6);
        *out++ = trail(0);
    } else {
        *out++ = static_cast<char>(0xF0 | (c >> 18));
        *out++ = trail(12);
        *out++ = trail(6);
        *out++ = trail(0);
    }
    return out;
}

/// Turns UTF-16 units, given one at a time, into UTF-8. `out` has room for 3 bytes a unit and must
/// outlive the writer; nothing is complete before finish().
class Utf8Writer {
public:
    explicit Utf8Writer(char* out) : out_(out) {}

    void put(char32_t unit) {
        if (high_ != 0 && isLowSurrogate(unit)) {
            out_ = putUtf8(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00), out_);
            high_ = 0;
            return;
        }
        finish();
        if (isHighSurrogate(unit)) {
            high_ = unit;
        } else {
            out_ = putUtf8(unit, out_);
        }
    }

    /// Gives the end of what was written.
    char* finish() {
        if (high_ != 0) out_ = putUtf8(high_, out_);
        high_ = 0;
        return out_;
    }

private:
    char* out_;
    char32_t high_ = 0;  // the first half of what may become a pair
};

/// The character of more than one byte that begins at `at`, which moves behind it.
[[nodiscard]] char32_t nextLongCharacter(std::string_view utf8, std::size_t& at);

/// The character that begins at `at` (within the text); `at` moves behind it.
[[nodiscard]] inline char32_t nextCharacter(std::string_view utf8, std::size_t& at) {
    const auto first = static_cast<unsigned char>(utf8[at]);
    if (first >= 0x80) return nextLongCharacter(utf8, at);
    ++at;
    return first;
}

/// How many characters a text has.
[[nodiscard]] inline std::size_t characterCount(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < utf8.size(); ++count) (void)nextCharacter(utf8, at);
    return count;
}

/// Writes the units to `out` (room for one a byte) and gives the end.
char16_t* toUtf16(std::string_view utf8, char16_t* out);
[[nodiscard]] std::u16string toUtf16(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::u16string_view units);

/// How many units toUtf16 gives.
[[nodiscard]] std::size_t utf16Length(std::string_view utf8);

}  // namespace stelvan::base
