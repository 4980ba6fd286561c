// A table and a cursor over its rows, as the users of a database see them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "jet/rows/column_facts.h"

namespace stelvan::jet {

/// Rows of a table, one after the other. Holds a read scope while it lives; a change of the table
/// through this process ends its use, except where Table says otherwise.
class Cursor {
public:
    virtual ~Cursor() = default;
    /// Moves to the next row; false after the last. Throws Corrupt with the page.
    virtual bool next() = 0;
    [[nodiscard]] virtual RowId rowId() const = 0;
    /// The value of a wanted column (position in TableInfo::columns; others give Null). Texts and
    /// bytes live until the next call of next(). Throws Corrupt when a long value cannot be read.
    [[nodiscard]] virtual ValueView value(std::size_t column) = 0;
};

/// The values of the row that a cursor stands on: `columns`, which it was asked for.
[[nodiscard]] inline std::vector<Value> valuesOf(Cursor& cursor, const ColumnSet& columns) {
    std::vector<Value> values;
    values.reserve(columns.size());
    for (const std::size_t column : columns) values.push_back(toValue(cursor.value(column)));
    return values;
}

enum class Extreme { Least, Greatest };

/// One table of an open database. Lives no longer than its Database.
class Table {
public:
    virtual ~Table() = default;

    /// Fresh at each call: follows changes by other processes.
    [[nodiscard]] virtual const TableInfo& info() = 0;

    /// All rows in stored order (page, then slot).
    [[nodiscard]] virtual std::unique_ptr<Cursor> scan(ColumnSet wanted) = 0;

    /// Rows whose index columns equal `key` (as many values as wanted from the left, at least one),
    /// in index order. Values are converted to the column's type; one that cannot be gives no rows.
    /// Text compares as the file's order does. `index` is a position in info().indexes. Throws
    /// UnsupportedOrder where the index has a text column of an order that cannot be computed: scan
    /// instead.
    [[nodiscard]] virtual std::unique_ptr<Cursor> find(std::size_t index,
                                                       std::span<const Value> key,
                                                       ColumnSet wanted) = 0;

    /// All rows in the order of an index (rows that it leaves out as null are not given).
    [[nodiscard]] virtual std::unique_ptr<Cursor> inOrder(std::size_t index, ColumnSet wanted) = 0;

    /// How many rows there are.
    [[nodiscard]] virtual std::uint64_t count() = 0;

    /// The least or greatest value, Nulls left aside, of the first column of an index; of several
    /// that the index holds for equal, the one stored first. Nothing where no row has a value, or
    /// the index does not tell, or its entries do not agree with the rows: scan instead.
    [[nodiscard]] virtual std::optional<Value> extreme(std::size_t index, Extreme which) = 0;

    /// One row, or null when it is gone. The cursor stands on the row already.
    [[nodiscard]] virtual std::unique_ptr<Cursor> row(RowId id, ColumnSet wanted) = 0;

    /// Adds a row: columns that are not named get Null (Boolean: False; AutoNumber: the next
    /// number). Default values are the caller's business. Constraints are checked before anything
    /// is changed.
    virtual RowId insert(std::span<const ColumnValue> values) = 0;

    /// Changes some columns. Throws RowGone.
    virtual void update(RowId id, std::span<const ColumnValue> values) = 0;

    /// Removes the row, its index entries and its long values. Throws RowGone.
    virtual void erase(RowId id) = 0;
};

}  // namespace stelvan::jet
