// A section of a TOML text read by the TOML library: whatever form it has.
#pragma once

#include <cstddef>
#include <string_view>

#include "model/text/section.h"

namespace stelvan::model {

/// Reads `source`, one section as sectionEnd cuts it, whose first line is `line`. False for one
/// without a header that holds nothing but comments. Throws TomlFault.
[[nodiscard]] bool readByLibrary(std::string_view source, std::size_t line, TomlSection& section);

}  // namespace stelvan::model
