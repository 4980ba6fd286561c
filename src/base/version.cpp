#include "base/version.h"

namespace stelvan::base {

std::string version() {
    return std::to_string(STELVAN_VERSION_MAJOR) + "." + std::to_string(STELVAN_VERSION_MINOR) +
           "." + std::to_string(STELVAN_VERSION_PATCH);
}

}  // namespace stelvan::base
