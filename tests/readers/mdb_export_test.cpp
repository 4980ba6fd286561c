// What we write, an independent reader reads alike; what it reads in our models is what their texts
// say.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/rows/row_reader.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::ColumnType;
using jet::Database;
using jet::Value;
using Values = std::vector<jet::ColumnValue>;

std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                               &::pclose);
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        text.append(buffer.data(), size);
    return text;
}

bool hasReader() {
    return std::system("command -v mdb-export > /dev/null 2>&1") == 0;
}

#define NEEDS_READER() \
    if (!hasReader()) GTEST_SKIP() << "mdb-export is not installed"

/// Rows of a table as mdb-export prints them, with separators that stand in no value; a Null is
/// "\x01".
std::multiset<std::string> exported(const std::filesystem::path& path, const std::string& table) {
    const std::string text = outputOf("mdb-export -H -Q -d '\x1F' -R '\x1E' -0 '\x01' -b octal '" +
                                      path.string() + "' '" + table + "'");
    std::multiset<std::string> rows;
    std::size_t begin = 0;
    for (std::size_t end = text.find('\x1E'); end != std::string::npos;
         end = text.find('\x1E', begin)) {
        rows.insert(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return rows;
}

std::string printed(const Value& value) {
    if (jet::isNull(value)) return "\x01";
    if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "1" : "0";
    if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return text->empty() ? "" : *text;
    return "?";
}

/// The same rows as we read them; whole numbers, flags and texts only.
std::multiset<std::string> ours(jet::Table& table) {
    std::multiset<std::string> rows;
    const std::size_t columns = table.info().columns.size();
    const auto cursor = table.scan(jet::allColumns(table.info()));
    while (cursor->next()) {
        std::string row;
        for (std::size_t i = 0; i < columns; ++i)
            row += (i == 0 ? "" : "\x1F") + printed(jet::toValue(cursor->value(i)));
        rows.insert(row);
    }
    return rows;
}

jet::TableSpec spec() {
    jet::TableSpec table;
    table.name = "Written";
    table.columns.resize(5);
    const char* names[] = {"id", "name", "plain", "memo", "flag"};
    const ColumnType types[] = {ColumnType::Long, ColumnType::Text, ColumnType::Text,
                                ColumnType::Memo, ColumnType::Boolean};
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        table.columns[i].name = names[i];
        table.columns[i].type = types[i];
        table.columns[i].compressed = i != 2;
    }
    table.indexes.resize(2);
    table.indexes[0].name = "PrimaryKey";
    table.indexes[0].columns = {{0, true}};
    table.indexes[0].primary = true;
    table.indexes[1].name = "name";
    table.indexes[1].columns = {{1, true}};
    return table;
}

Values rowOf(int i) {
    const std::string text = i % 3 == 0   ? "caf\xC3\xA9 " + std::to_string(i)
                             : i % 3 == 1 ? "\xE6\x97\xA5\xE6\x9C\xAC " + std::to_string(i)
                                          : "plain";
    Values values = {{0, i}, {1, text}, {2, text + "!"}, {4, i % 2 == 0}};
    if (i % 5 != 0)
        values.emplace_back(3, std::string(static_cast<std::size_t>(i) * 37 % 6000 + 1, 'm'));
    return values;
}

using Json = nlohmann::json;
using TextRows = std::map<std::string, std::multiset<std::vector<std::string>>>;

/// One spelling for equal numbers; an empty text is a Null for that reader.
std::string comparable(const std::string& text, bool number) {
    if (text.empty()) return "\x01";
    if (!number || text == "\x01") return text;
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.14g", std::stod(text));
    return digits.data();
}

std::string textOf(const Json& value) {
    if (value.is_null()) return "\x01";
    if (value.is_string()) return comparable(value.get<std::string>(), false);
    if (value.is_boolean()) return value.get<bool>() ? "1" : "0";
    return comparable(value.dump(), true);
}

/// That reader cannot show characters of four bytes.
bool hasWideCharacter(const Json& row) {
    const std::string text = row.dump();
    return std::ranges::any_of(text, [](char c) { return static_cast<std::uint8_t>(c) >= 0xF0; });
}

TextRows rowsOfTexts(const ModelFile& file) {
    TextRows rows;
    std::ifstream lines(file.expected("jsonl"));
    for (std::string line; std::getline(lines, line);) {
        const auto json = nlohmann::ordered_json::parse(line);
        if (hasWideCharacter(json)) continue;
        std::vector<std::string> cells;
        for (const auto& [column, value] : json.at("row").items()) cells.push_back(textOf(value));
        rows[json.at("table")].insert(cells);
    }
    return rows;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, begin)) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::vector<bool> numberColumns(const Json& table) {
    std::vector<bool> numbers;
    for (const Json& column : table.at("columns")) {
        const std::string type = column.at("type");
        numbers.push_back(type != "TEXT" && type != "MEMO" && type != "OLE" &&
                          type != "SHORT_DATE_TIME");
    }
    return numbers;
}

TextRows rowsOfOtherReader(const ModelFile& file) {
    TextRows rows;
    std::ifstream lines(file.expected("schema.jsonl"));
    for (std::string line; std::getline(lines, line);) {
        const Json table = Json::parse(line);
        if (!table.contains("table")) continue;
        const std::string name = table.at("table");
        const std::vector<bool> numbers = numberColumns(table);
        for (const std::string& row : exported(file.path(), name)) {
            if (row.find("??") != std::string::npos) continue;
            std::vector<std::string> cells = split(row, '\x1F');
            for (std::size_t i = 0; i < cells.size(); ++i)
                cells[i] = comparable(cells[i], numbers.at(i));
            rows[name].insert(cells);
        }
    }
    return rows;
}

class OwnModel : public ::testing::TestWithParam<std::string> {};

TEST_P(OwnModel, HoldsForAnotherReaderWhatItsTextsSay) {
    NEEDS_READER();
    const ModelFile file{GetParam(), Maker::Own};
    const TextRows wanted = rowsOfTexts(file);
    const TextRows found = rowsOfOtherReader(file);
    EXPECT_EQ(found.size(), wanted.size());
    for (const auto& [table, rows] : wanted) {
        ASSERT_TRUE(found.contains(table)) << table;
        EXPECT_TRUE(found.at(table) == rows) << table;
    }
}

INSTANTIATE_TEST_SUITE_P(Models, OwnModel,
                         ::testing::Values("gem.mdb", "gem_int_flags.mdb", "gem_empty.mdb",
                                           "gem_edges.mdb", "gem_large.mdb", "gem_spellings.mdb",
                                           "gem_few_columns.mdb", "shapes/compressed_text.mdb",
                                           "shapes/deleted_columns.mdb", "shapes/deleted_rows.mdb",
                                           "shapes/descending_index.mdb", "shapes/no_rows.mdb",
                                           "shapes/numeric.mdb", "shapes/overflow.mdb",
                                           "shapes/relationships.mdb"),
                         [](const auto& file) {
                             return label({file.param, Maker::Own});
                         });

TEST(IndependentReader, ListsAndReadsANewDatabase) {
    NEEDS_READER();
    ScratchDir scratch;
    const auto path = scratch.path() / "new.mdb";
    Database database = Database::create(path, jet::DateTime{45000});
    database.createTable(spec());
    {
        jet::UnitOfWork unit(database);
        for (int i = 1; i <= 500; ++i) database.table("Written").insert(rowOf(i));
        unit.commit();
    }
    EXPECT_NE(outputOf("mdb-tables -1 '" + path.string() + "'").find("Written\n"),
              std::string::npos);
    EXPECT_NE(outputOf("mdb-schema '" + path.string() + "'").find("[plain]"), std::string::npos);
    EXPECT_EQ(exported(path, "Written"), ours(database.table("Written")));
}

TEST(IndependentReader, ReadsAlikeAfterRowsWereChangedMovedAndErased) {
    NEEDS_READER();
    ScratchDir scratch;
    const auto path = scratch.path() / "new.mdb";
    Database database = Database::create(path, jet::DateTime{45000});
    database.createTable(spec());
    jet::Table& table = database.table("Written");
    std::vector<jet::RowId> rows;
    {
        jet::UnitOfWork unit(database);
        for (int i = 1; i <= 300; ++i) rows.push_back(table.insert(rowOf(i)));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i % 7 == 0) {
                table.erase(rows[i]);
            } else if (i % 3 == 0) {
                table.update(rows[i],
                             Values{{1, std::string(200, 'w')}, {2, std::string(250, 'v')}});
            } else if (i % 4 == 0) {
                table.update(rows[i], Values{{3, jet::Null{}}});
            }
        }
        unit.commit();
    }
    EXPECT_EQ(exported(path, "Written"), ours(table));
}

TEST(IndependentReader, ReadsAlikeAfterARealFileWasChanged) {
    NEEDS_READER();
    ScratchDir scratch;
    const auto path = scratch.copyOf(model("gem.mdb"));
    Database database = Database::open(path);
    jet::Table& reports = database.table("secs_report");
    const std::size_t id = *reports.info().findColumn("rpt_id");
    const std::size_t name = *reports.info().findColumn("rpt_name");
    for (int i = 0; i < 50; ++i)
        reports.insert(Values{{id, 5000 + i}, {name, "Report " + std::to_string(5000 + i)}});
    EXPECT_EQ(exported(path, "secs_report"), ours(reports));
    EXPECT_FALSE(jet::anyFault(jet::check(path)));
}

}  // namespace
}  // namespace stelvan::test
