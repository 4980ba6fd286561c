// What standard output is.
#pragma once

namespace stelvan::gemdb {

/// Whether colours are welcome: a terminal that knows them, and no NO_COLOR in the environment.
[[nodiscard]] bool wantsColours();

}  // namespace stelvan::gemdb
