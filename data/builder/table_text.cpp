#include "data/builder/table_text.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace stelvan::data {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> wordsOf(const std::string& line) {
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

char letterOf(char escape) {
    constexpr std::string_view kEscapes = "trn\\";
    constexpr std::string_view kLetters = "\t\r\n\\";
    const std::size_t at = kEscapes.find(escape);
    if (at == std::string_view::npos) {
        throw std::runtime_error(std::string("\\") + escape + " stands for nothing");
    }
    return kLetters[at];
}

/// What a word of a line says, with the replacements made in its text.
Cell cellOf(const std::string& word, const Replacements& replacements) {
    if (word == "\\N") return std::nullopt;
    std::string text;
    for (std::size_t at = 0; at < word.size(); ++at) {
        const bool escape = word[at] == '\\' && at + 1 < word.size();
        text += escape ? letterOf(word[++at]) : word[at];
    }
    replaceIn(text, replacements);
    return text;
}

TableRows readTable(const fs::path& file, const Replacements& replacements) {
    TableRows table{file.stem().string(), {}, {}};
    std::istringstream lines(readText(file));
    std::string line;
    if (std::getline(lines, line)) table.columns = wordsOf(line);
    for (int number = 2; std::getline(lines, line); ++number) {
        const auto fail = [&](const std::string& why) {
            throw std::runtime_error(file.string() + ", line " + std::to_string(number) + ": " +
                                     why);
        };
        const std::vector<std::string> words = wordsOf(line);
        if (words.size() != table.columns.size()) {
            fail(std::to_string(words.size()) + " cells, but " +
                 std::to_string(table.columns.size()) + " columns");
        }
        Cells& cells = table.rows.emplace_back();
        cells.reserve(words.size());
        try {
            for (const std::string& word : words) cells.push_back(cellOf(word, replacements));
        } catch (const std::runtime_error& fault) {
            fail(fault.what());
        }
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

}  // namespace stelvan::data
