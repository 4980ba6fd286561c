#include "gemdb/terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace stelvan::gemdb {

bool wantsColours() {
    const char* terminal = std::getenv("TERM");
    const char* plain = std::getenv("NO_COLOR");
    const bool knows = terminal != nullptr && std::string_view(terminal) != "dumb";
    const bool refused = plain != nullptr && *plain != '\0';
    return knows && !refused && ::isatty(STDOUT_FILENO) == 1;
}

}  // namespace stelvan::gemdb
