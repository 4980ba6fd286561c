// The short way through a section of a TOML text: for those in the form that export writes.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "model/text/section.h"

namespace stelvan::model {

/// Reads the section that begins at `begin` (line `line`) and gives where the next one begins.
/// Nothing where it has any other form, right or wrong; `section` is then half filled.
[[nodiscard]] std::optional<std::size_t> readShortWay(std::string_view text, std::size_t begin,
                                                      std::size_t line, TomlSection& section);

}  // namespace stelvan::model
