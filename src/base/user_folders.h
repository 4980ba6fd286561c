// The folders of the user who runs the program, as desktops agree on them.
#pragma once

#include <filesystem>

namespace stelvan::base {

/// A folder that an environment variable names; empty where it is not set.
[[nodiscard]] std::filesystem::path folderNamedBy(const char* variable);

/// Where what the program keeps from one start to the next lies: $XDG_STATE_HOME/stelvan where that
/// is an absolute path, else ~/.local/state/stelvan. It need not exist.
[[nodiscard]] std::filesystem::path stateFolder();

}  // namespace stelvan::base
