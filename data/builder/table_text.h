// The rows of one table as text: a file TABLE.tsv, its first line the column names, every further
// line a row, cells parted by tabs. An empty cell is an empty text; columns that are not named get
// their default.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace stelvan::model {

struct TableRows {
    std::string table;
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
};

/// Words such as "@STATE_DIR@" and the texts that take their place.
using Replacements = std::map<std::string, std::string>;

/// All files *.tsv of a folder, by name. Throws std::runtime_error that names file and line.
[[nodiscard]] std::vector<TableRows> readTables(const std::filesystem::path& folder,
                                                const Replacements& replacements = {});

[[nodiscard]] std::string readText(const std::filesystem::path& file);

}  // namespace stelvan::model
