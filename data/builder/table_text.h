// The rows of one table as text: a file TABLE.tsv, its first line the column names, every further
// line a row, cells parted by tabs. An empty cell is an empty text, \N alone is Null; \t, \r, \n
// and \\ stand for a tab, the ends of lines and a backslash. Columns that are not named get their
// default.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace stelvan::data {

/// The text of a value; nothing for Null.
using Cell = std::optional<std::string>;
using Cells = std::vector<Cell>;

struct TableRows {
    std::string table;
    std::vector<std::string> columns;
    std::vector<Cells> rows;
};

/// Words such as "@STATE_DIR@" and the texts that take their place.
using Replacements = std::map<std::string, std::string>;

/// All files *.tsv of a folder, by name. Throws std::runtime_error that names file and line.
[[nodiscard]] std::vector<TableRows> readTables(const std::filesystem::path& folder,
                                                const Replacements& replacements = {});

[[nodiscard]] std::string readText(const std::filesystem::path& file);

}  // namespace stelvan::data
