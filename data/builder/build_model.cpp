#include "data/builder/build_model.h"

#include <stdexcept>

#include "jet/rows/conversion.h"

namespace stelvan::data {
namespace {

namespace fs = std::filesystem;

jet::Blob bytesOf(const std::string& hexadecimal) {
    jet::Blob bytes;
    for (std::size_t at = 0; at + 1 < hexadecimal.size(); at += 2) {
        bytes.push_back(
            static_cast<std::uint8_t>(std::stoi(hexadecimal.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

jet::Value valueOf(const jet::ColumnInfo& column, const Cell& cell) {
    if (!cell) return jet::Null{};
    if (column.type == jet::ColumnType::DateTime) return dateOf(*cell);
    if (column.type == jet::ColumnType::Ole) return bytesOf(*cell);
    return jet::convertTo(column, *cell);
}

}  // namespace

RowValues::RowValues(const TableRows& rows, const jet::TableInfo& table) : table_(table) {
    std::vector<bool> named(table.columns.size(), false);
    for (const std::string& name : rows.columns) {
        const auto column = table.findColumn(name);
        if (!column) throw std::runtime_error(rows.table + " has no column " + name);
        columns_.push_back(*column);
        named[*column] = true;
    }
    for (std::size_t column = 0; column < named.size(); ++column) {
        const jet::ColumnInfo& info = table.columns[column];
        if (!named[column] && !info.defaultValue.empty()) {
            defaults_.emplace_back(column, jet::convertTo(info, info.defaultValue));
        }
    }
}

std::vector<jet::ColumnValue> RowValues::of(const Cells& cells) const {
    std::vector<jet::ColumnValue> values = defaults_;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        const std::size_t column = columns_[cell];
        values.emplace_back(column, valueOf(table_.columns[column], cells[cell]));
    }
    return values;
}

void insertRows(jet::Table& table, const TableRows& rows) {
    const RowValues values(rows, table.info());
    for (const Cells& row : rows.rows) table.insert(values.of(row));
}

void buildModel(const fs::path& path, const Schema& schema, std::span<const TableRows> tables,
                const InsertRows& insert) {
    jet::Database database = jet::Database::create(path, schema.created);
    try {
        jet::UnitOfWork unit(database);
        for (const jet::TableSpec& table : schema.tables) database.createTable(table);
        for (const auto& relationship : schema.relationships) {
            database.createRelationship(relationship);
        }
        for (const TableRows& rows : tables) insert(database.table(rows.table), rows);
        unit.commit();
    } catch (...) {
        std::error_code ignored;
        fs::remove(path, ignored);
        throw;
    }
}

}  // namespace stelvan::data
