// A program's manual page, in the roff of man(7), made of the texts that its --help shows.
#pragma once

#include <string>
#include <vector>

#include "gemdb/command_line_facts.h"

namespace stelvan::gemdb {

struct ManualPage {
    std::string program;
    std::string version;
    std::string date;     // of the release, YYYY-MM-DD
    std::string summary;  // what it is, in half a line
    std::string description;
    std::vector<OptionFacts> options;
    std::vector<VerbFacts> verbs;
    std::string exitStatus;
    std::vector<std::pair<std::string, std::string>> files;  // name, what it is
    std::vector<std::string> seeAlso;                        // "gemdb(1)"
};

[[nodiscard]] std::string manualText(const ManualPage& page);

}  // namespace stelvan::gemdb
