// LIKE as the provider has it: % any text, _ any character, [a-z], [!a-z]; by the file's order, so
// without regard to letter case.
#pragma once

#include <string_view>

namespace stelvan::sql {

[[nodiscard]] bool matchesLike(std::string_view text, std::string_view pattern);

}  // namespace stelvan::sql
