// Rows as comparable text: what the engine reads, and what the expected files say, brought to one
// form.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "jet/database.h"

namespace stelvan::test {

/// Table name to its rows; each row a line "column=value|...".
using RowTexts = std::map<std::string, std::multiset<std::string>>;

/// One value, numbers by value.
std::string valueText(jet::ColumnType type, const jet::ValueView& value);
std::string valueText(const nlohmann::json& expected);

std::string rowText(const jet::TableInfo& info, jet::Cursor& row);

/// All rows of a table or of all (user, or system) tables.
std::multiset<std::string> readRows(jet::Table& table);
RowTexts readAll(jet::Database& database, bool system = false);

/// The rows of an expected file (.jsonl, or .jsonl.gz where gzip is there).
RowTexts expectedRows(const std::string& path);

/// The lines of a text file, unpacked when its name ends in .gz.
std::vector<std::string> linesIn(const std::string& path);

/// The first few lines that only one of the two has; empty when they are equal.
std::string difference(const std::multiset<std::string>& expected,
                       const std::multiset<std::string>& found);

}  // namespace stelvan::test
