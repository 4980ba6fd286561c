#include "base/text.h"

#include <algorithm>
#include <array>
#include <span>

#include "base/utf.h"

namespace stelvan::base {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array kOfSeveralLines{
    Range{0x09, 0x0D},      // tab, line feed, line tabulation, form feed, carriage return
    Range{0x85, 0x85},      // next line
    Range{0x2028, 0x2029},  // line separator, paragraph separator
};

constexpr std::array kOtherSpaces{
    Range{0xA0, 0xA0},      // no-break space
    Range{0x1680, 0x1680},  // Ogham space mark
    Range{0x2000, 0x200A},  // from en quad to hair space
    Range{0x202F, 0x202F},  // narrow no-break space
    Range{0x205F, 0x205F},  // medium mathematical space
    Range{0x3000, 0x3000},  // ideographic space
    Range{0xFEFF, 0xFEFF},  // zero width no-break space
};

bool isIn(std::span<const Range> ranges, char32_t c) {
    return std::ranges::any_of(
        ranges, [c](const Range& range) { return c >= range.first && c <= range.last; });
}

bool isOfSeveralLines(char32_t c) {
    return isIn(kOfSeveralLines, c);
}

bool isSpaceOfAnyKind(char32_t c) {
    return isIn(kOfSeveralLines, c) || isIn(kOtherSpaces, c);
}

using base::nextCharacter;

/// Unit by unit: nothing that becomes a blank is a pair of them.
char32_t nextCharacter(std::u16string_view text, std::size_t& at) {
    return text[at++];
}

/// A copy with one blank for each character that is `replaced`, CR LF being one.
template <typename Unit>
std::basic_string<Unit> withBlanksFor(bool (*replaced)(char32_t),
                                      std::basic_string_view<Unit> text) {
    std::basic_string<Unit> result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t c = nextCharacter(text, at);
        if (c == U'\r' && at < text.size() && text[at] == Unit{'\n'}) ++at;
        if (replaced(c)) {
            result += Unit{' '};
        } else {
            result += text.substr(start, at - start);
        }
    }
    return result;
}

}  // namespace

std::string_view trimBlanks(std::string_view text) {
    text = withoutTrailingBlanks(text);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char c) { return upperCase(c); });
    return upper;
}

bool sameWord(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right,
                              [](char a, char b) { return upperCase(a) == upperCase(b); });
}

std::string onOneLine(std::string_view text) {
    return withBlanksFor(isOfSeveralLines, text);
}

std::u16string onOneLine(std::u16string_view text) {
    return withBlanksFor(isOfSeveralLines, text);
}

std::u16string withPlainBlanks(std::u16string_view text) {
    return withBlanksFor(isSpaceOfAnyKind, text);
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace stelvan::base
