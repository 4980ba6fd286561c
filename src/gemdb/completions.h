// What the shells complete of a command line: verbs, options, files, and the tables of the file
// that stands on the line already.
#pragma once

#include <string>
#include <vector>

#include "gemdb/command_line_facts.h"

namespace stelvan::gemdb {

[[nodiscard]] std::string bashCompletion(const std::string& program,
                                         const std::vector<VerbFacts>& verbs);
[[nodiscard]] std::string zshCompletion(const std::string& program,
                                        const std::vector<VerbFacts>& verbs);
[[nodiscard]] std::string fishCompletion(const std::string& program,
                                         const std::vector<VerbFacts>& verbs);

}  // namespace stelvan::gemdb
