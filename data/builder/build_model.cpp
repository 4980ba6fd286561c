#include "data/builder/build_model.h"

#include <stdexcept>

#include "jet/rows/conversion.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

/// Where each column of the table takes its values from: a cell, or its default.
struct RowPlan {
    std::vector<std::size_t> cells;  // column positions, in the order of the cells
    std::vector<jet::ColumnValue> defaults;
};

RowPlan planOf(const TableRows& rows, const jet::TableInfo& table) {
    RowPlan plan;
    std::vector<bool> named(table.columns.size(), false);
    for (const std::string& name : rows.columns) {
        const auto column = table.findColumn(name);
        if (!column) throw std::runtime_error(rows.table + " has no column " + name);
        plan.cells.push_back(*column);
        named[*column] = true;
    }
    for (std::size_t column = 0; column < named.size(); ++column) {
        const jet::ColumnInfo& info = table.columns[column];
        if (!named[column] && !info.defaultValue.empty()) {
            plan.defaults.emplace_back(column, jet::convertTo(info, info.defaultValue));
        }
    }
    return plan;
}

void insertRows(jet::Database& database, const TableRows& rows) {
    jet::Table& table = database.table(rows.table);
    const jet::TableInfo info = table.info();
    const RowPlan plan = planOf(rows, info);
    std::vector<jet::ColumnValue> values;
    for (const std::vector<std::string>& row : rows.rows) {
        values = plan.defaults;
        for (std::size_t cell = 0; cell < row.size(); ++cell) {
            const std::size_t column = plan.cells[cell];
            values.emplace_back(column, jet::convertTo(info.columns[column], row[cell]));
        }
        table.insert(values);
    }
}

}  // namespace

void buildModel(const fs::path& path, const Schema& schema, std::span<const TableRows> tables) {
    jet::Database database = jet::Database::create(path, schema.created);
    try {
        jet::UnitOfWork unit(database);
        for (const jet::TableSpec& table : schema.tables) database.createTable(table);
        for (const TableRows& rows : tables) insertRows(database, rows);
        unit.commit();
    } catch (...) {
        std::error_code ignored;
        fs::remove(path, ignored);
        throw;
    }
}

}  // namespace stelvan::model
