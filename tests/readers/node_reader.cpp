#include "tests/readers/node_reader.h"

#include <array>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <numeric>
#include <sstream>
#include <stdexcept>

#include "gemdb/json_line.h"
#include "jet/database.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

std::string outputOf(const std::string& command) {
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
    std::string text;
    std::array<char, 65536> part{};
    for (std::size_t n = 0; (n = std::fread(part.data(), 1, part.size(), pipe)) > 0;)
        text.append(part.data(), n);
    if (::pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
    return text;
}

/// What a script prints of a file with the help of a package; nothing where that is absent.
std::optional<std::string> outputOfReader(const char* package, const char* script,
                                          const fs::path& file) {
    const fs::path folder = STELVAN_NODE_READER_DIR;
    if (!fs::exists(folder / "node_modules" / package)) return std::nullopt;
    return outputOf("node '" + (folder / script).string() + "' '" + file.string() + "'");
}

/// Parsing and printing again gives both sides one spelling of numbers and one order of members.
RowTexts canonical(const std::string& lines) {
    RowTexts rows;
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);) rows.insert(nlohmann::json::parse(line).dump());
    return rows;
}

std::string linesOf(jet::Table& table) {
    const jet::TableInfo info = table.info();
    jet::ColumnSet all(info.columns.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    std::string lines;
    gemdb::JsonLine line;
    const auto rows = table.scan(all);
    while (rows->next()) {
        line.open('{').member("table").text(info.name).member("row").open('{');
        for (const std::size_t column : all)
            line.member(info.columns[column].name).value(rows->value(column));
        lines += line.close('}').close('}').take();
    }
    return lines;
}

}  // namespace

std::optional<RowTexts> readWithNode(const fs::path& file) {
    const auto text = outputOfReader("mdb-reader", "dump.mjs", file);
    return text ? std::optional(canonical(*text)) : std::nullopt;
}

std::optional<std::vector<std::string>> readSmlWithNode(const fs::path& sml) {
    const auto text = outputOfReader("secs4js", "sml.mjs", sml);
    return text ? std::optional(splitLines(*text)) : std::nullopt;
}

RowTexts readWithEngine(const fs::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    std::string lines;
    for (const std::string& name : database.tableNames()) lines += linesOf(database.table(name));
    return canonical(lines);
}

}  // namespace stelvan::test
