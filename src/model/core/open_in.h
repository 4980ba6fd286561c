// Which programs have a file open, whether or not they do anything with it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace stelvan::model {

struct Opener {
    int process = 0;
    std::string name;  // of the program
    bool self = false;
};

/// This process and those of the same user (all of them for the superuser); others are not seen.
[[nodiscard]] std::vector<Opener> programsWithOpen(const std::filesystem::path& file);

}  // namespace stelvan::model
