#include "data/builder/table_text.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t start = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string::npos;
         tab = line.find('\t', start)) {
        cells.push_back(line.substr(start, tab - start));
        start = tab + 1;
    }
    cells.push_back(line.substr(start));
    return cells;
}

void replaceIn(std::string& cell, const Replacements& replacements) {
    for (const auto& [word, text] : replacements) {
        for (std::size_t at = cell.find(word); at != std::string::npos;
             at = cell.find(word, at + text.size())) {
            cell.replace(at, word.size(), text);
        }
    }
}

TableRows readTable(const fs::path& file, const Replacements& replacements) {
    TableRows table{file.stem().string(), {}, {}};
    std::istringstream lines(readText(file));
    std::string line;
    if (std::getline(lines, line)) table.columns = cellsOf(line);
    for (int number = 2; std::getline(lines, line); ++number) {
        std::vector<std::string> cells = cellsOf(line);
        if (cells.size() != table.columns.size()) {
            throw std::runtime_error(file.string() + ", line " + std::to_string(number) + ": " +
                                     std::to_string(cells.size()) + " cells, but " +
                                     std::to_string(table.columns.size()) + " columns");
        }
        for (std::string& cell : cells) replaceIn(cell, replacements);
        table.rows.push_back(std::move(cells));
    }
    return table;
}

}  // namespace

std::string readText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error(file.string() + ": cannot be read");
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<TableRows> readTables(const fs::path& folder, const Replacements& replacements) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".tsv") files.push_back(entry.path());
    }
    std::ranges::sort(files);
    std::vector<TableRows> tables;
    for (const fs::path& file : files) tables.push_back(readTable(file, replacements));
    return tables;
}

}  // namespace stelvan::model
