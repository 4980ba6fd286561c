// Where a section of a TOML text ends, whatever stands in it: texts of several lines, lists,
// comments, tables of its own.
#pragma once

#include <cstddef>
#include <string_view>

namespace stelvan::model {

/// The beginning of the next header that is no part of the section that begins at `begin` (a
/// dotted one belongs to the section before it), or the end of the text. What is not closed reaches
/// to the end.
[[nodiscard]] std::size_t sectionEnd(std::string_view text, std::size_t begin);

}  // namespace stelvan::model
