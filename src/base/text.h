// Texts by their characters: what a blank is, the case of ASCII letters, what one line is.
//
// A blank is U+0020 alone; a tab, a line break, a no-break space are characters like any other.
// Nothing here asks the locale. Texts are UTF-8 where no other form is said; bytes that are no
// UTF-8 stay as they are. Views live as long as the text that was given.
#pragma once

#include <string>
#include <string_view>

namespace stelvan::base {

[[nodiscard]] inline bool contains(std::string_view text, char wanted) {
    return text.find(wanted) != std::string_view::npos;
}

[[nodiscard]] inline std::string_view withoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}
[[nodiscard]] inline std::u16string_view withoutTrailingBlanks(std::u16string_view text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

/// Without leading and trailing blanks.
[[nodiscard]] std::string_view trimBlanks(std::string_view text);

[[nodiscard]] inline bool isBlank(std::string_view text) {
    return trimBlanks(text).empty();
}

/// A blank between other characters; outer ones do not count.
[[nodiscard]] inline bool hasInnerBlank(std::string_view text) {
    return contains(trimBlanks(text), ' ');
}

[[nodiscard]] constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// ASCII letters, as in codes and keywords; names compare by the order of the file that holds them.
[[nodiscard]] constexpr char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
[[nodiscard]] constexpr bool isLetter(char c) {
    return upperCase(c) >= 'A' && upperCase(c) <= 'Z';
}
[[nodiscard]] std::string upperCase(std::string_view text);

/// Equal but for the case of ASCII letters.
[[nodiscard]] bool sameWord(std::string_view left, std::string_view right);

/// A text of several lines on one line: each line break (CR LF counts as one) and each tab is one
/// blank.
[[nodiscard]] std::string onOneLine(std::string_view text);
[[nodiscard]] std::u16string onOneLine(std::u16string_view text);

/// As a one-line input takes a text: each line break, each tab and each space of another width or
/// kind is one blank.
[[nodiscard]] std::u16string withPlainBlanks(std::u16string_view text);

/// "1 report", "2 reports".
[[nodiscard]] std::string counted(std::size_t count, std::string_view noun);

}  // namespace stelvan::base
