#include "base/user_folders.h"

#include <cstdlib>

namespace stelvan::base {

std::filesystem::path folderNamedBy(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

std::filesystem::path stateFolder() {
    const std::filesystem::path state = folderNamedBy("XDG_STATE_HOME");
    if (state.is_absolute()) return state / "stelvan";
    return folderNamedBy("HOME") / ".local" / "state" / "stelvan";
}

}  // namespace stelvan::base
