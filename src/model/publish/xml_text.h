// Texts of a model inside XML: which characters it can hold.
#pragma once

#include <string>
#include <string_view>

namespace stelvan::model {

/// Whether XML 1.0 has a way to write every character of the text: no control characters but tab
/// and line breaks, no half surrogate pairs, no U+FFFE and U+FFFF.
[[nodiscard]] bool isXmlText(std::string_view text);

/// The text with U+FFFD in place of each character that XML cannot hold.
[[nodiscard]] std::string xmlText(std::string_view text);

}  // namespace stelvan::model
