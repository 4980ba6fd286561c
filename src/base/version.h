// The version of the programs, as CMakeLists.txt states it.
#pragma once

#include <string>

namespace stelvan::base {

/// "1.0.0".
[[nodiscard]] std::string version();

}  // namespace stelvan::base
