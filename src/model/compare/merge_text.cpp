#include "model/compare/merge_text.h"

namespace stelvan::model {

void writeConflicts(std::span<const Conflict> conflicts, bool coloured, const Sink& sink) {
    for (const Conflict& conflict : conflicts) {
        const std::string what = conflict.what.empty() ? "" : ", " + conflict.what;
        const std::string heading = "! " + conflict.item + what;
        sink(coloured ? "\x1b[31m" + heading + "\x1b[0m\n" : heading + "\n");
        sink("    base:   " + conflict.base + "\n");
        sink("    ours:   " + conflict.ours + "\n");
        sink("    theirs: " + conflict.theirs + "\n");
    }
}

}  // namespace stelvan::model
