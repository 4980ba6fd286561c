// gemdb as CLI11 sees it: every verb with its options, help and examples. The program parses with
// it; the manual page and the completions of the shells are made of it.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

namespace stelvan::gemdb {

/// `status` receives the exit status of the verb that parsing runs, and outlives it.
[[nodiscard]] std::unique_ptr<CLI::App> makeApplication(int& status);

}  // namespace stelvan::gemdb
