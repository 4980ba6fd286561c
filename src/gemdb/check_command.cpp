#include "gemdb/commands.h"
#include "jet/check/check.h"

namespace stelvan::gemdb {

int checkCommand(const std::filesystem::path& file, bool strict) {
    const std::vector<jet::Finding> findings = jet::check(file, {.strict = strict});
    Output output;
    for (const jet::Finding& finding : findings) {
        if (!finding.isNote)
            output.write("page " + std::to_string(finding.page) + ": " + finding.text + "\n");
    }
    output.finish();
    return jet::anyFault(findings) ? kFaultsFound : kDone;
}

}  // namespace stelvan::gemdb
