// Makes an Access file from a schema and rows: the same texts give the same bytes.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <vector>

#include "data/builder/schema_text.h"
#include "data/builder/table_text.h"

namespace stelvan::data {

/// What the cells of a row are in the columns of a table; columns that no cell names get their
/// default.
class RowValues {
public:
    /// Throws std::runtime_error where the table has no such column.
    RowValues(const TableRows& rows, const jet::TableInfo& table);

    /// Throws jet::Error where a column cannot take its cell.
    [[nodiscard]] std::vector<jet::ColumnValue> of(const Cells& cells) const;

private:
    jet::TableInfo table_;
    std::vector<std::size_t> columns_;  // positions, in the order of the cells
    std::vector<jet::ColumnValue> defaults_;
};

/// Puts rows into their table.
using InsertRows = std::function<void(jet::Table&, const TableRows&)>;

/// One after the other.
void insertRows(jet::Table& table, const TableRows& rows);

/// Creates `path`, which must not exist, with all tables, relationships and rows; rows of one table
/// may come in several parts and keep their order. Throws std::runtime_error (no such column) and
/// jet::Error (no such table, a cell that its column cannot take); nothing is left behind then.
void buildModel(const std::filesystem::path& path, const Schema& schema,
                std::span<const TableRows> tables, const InsertRows& insert = insertRows);

}  // namespace stelvan::data
