// Small questions about texts that several rules ask.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "base/number.h"

namespace stelvan::base {

[[nodiscard]] inline bool contains(std::string_view text, char wanted) {
    return text.find(wanted) != std::string_view::npos;
}

/// A blank between other characters; outer ones do not count.
[[nodiscard]] inline bool hasInnerBlank(std::string_view text) {
    return contains(trimBlanks(text), ' ');
}

[[nodiscard]] inline bool isBlank(std::string_view text) {
    return trimBlanks(text).empty();
}

/// ASCII letters only: codes and keywords, never names.
[[nodiscard]] inline std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return upper;
}

}  // namespace stelvan::base
