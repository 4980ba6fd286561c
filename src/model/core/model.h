// A whole model as one value: its tables with all columns that the file has, known to us or not,
// and all rows, in an order of their own that does not depend on where the file keeps them.
//
// It is a copy: reading takes one moment of the file and lets go of it, and changing a Model
// changes no file (write.h does). Nothing is lost or made nicer on the way: Null stays Null,
// identifiers may be missing or doubled, links may lead nowhere.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jet/database.h"
#include "model/core/parts.h"

namespace stelvan::model {

/// One row. `values` has one entry for each of its table's columns. `id` says where in the file it
/// was read; it is {0, 0} for one that comes from elsewhere, and does not count when rows are
/// compared.
struct Row {
    jet::RowId id;
    std::vector<jet::Value> values;
};

struct Table {
    bool present = false;  // whether the file has it; the rest is empty where it has not
    std::string name;      // as the file spells it
    std::vector<std::string> columns;
    std::vector<Row> rows;

    /// Position of a column, letter case ignored.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view column) const;
    /// The value in a column; Null where the table has none of that name.
    [[nodiscard]] const jet::Value& value(const Row& row, std::string_view column) const;
    /// The same as text (jet::textOf), empty for Null.
    [[nodiscard]] std::string text(const Row& row, std::string_view column) const;
    /// The same as a whole number; nothing for Null and for what is none.
    [[nodiscard]] std::optional<std::int64_t> number(const Row& row, std::string_view column) const;
};

struct Model {
    std::array<Table, kParts> tables;

    [[nodiscard]] Table& operator[](Part part) { return tables[indexOf(part)]; }
    [[nodiscard]] const Table& operator[](Part part) const { return tables[indexOf(part)]; }
};

/// Reads every part at one moment of the file. Rows stand in ascending order of identifier (of the
/// owner, for link rows and limits), then of place, target, name and all other columns; what has no
/// identifier comes first. A file that lacks tables gives a model that lacks them. Throws
/// jet::Error.
[[nodiscard]] Model read(jet::Database& database);
[[nodiscard]] Model read(const std::filesystem::path& file);

/// Throws Refusal for a database that has none of a model's tables.
void requireModel(const Model& model);
void requireModel(jet::Database& database);

/// Puts the rows of all tables into that order.
void sortRows(Model& model);

/// The table of the file that holds a part; nothing where there is none.
[[nodiscard]] std::optional<std::string> tableOf(Part part, jet::Database& database);

/// The category in which the editor shows a row; NO_CATEGORY for a variable of no known type and
/// for link rows.
[[nodiscard]] std::int16_t categoryOf(Part part, const Table& table, const Row& row);
/// The same by what var_type holds; it does not count for items without types.
[[nodiscard]] std::int16_t categoryOf(Part part, std::string_view type);

}  // namespace stelvan::model
