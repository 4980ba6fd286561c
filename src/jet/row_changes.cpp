#include "jet/row_changes.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "jet/database.h"
#include "jet/database_impl.h"

namespace stelvan::jet {
namespace {

std::vector<ColumnValue> allOf(const std::vector<Value>& values) {
    std::vector<ColumnValue> all;
    for (std::size_t column = 0; column < values.size(); ++column)
        all.emplace_back(column, values[column]);
    return all;
}

/// Throws unless the row is as a change left it.
void requireAsLeft(Table& table, const RowChange& change) {
    const ColumnSet all = allColumns(table.info());
    const auto row = table.row(change.row, all);
    if (row == nullptr) throw Error::of(ErrorKind::RowGone, change.table);
    if (valuesOf(*row, all) != *change.after) throw Error::of(ErrorKind::RowChanged, change.table);
}

void rename(RowChanges& changes, const std::string& table, RowId from, RowId to) {
    for (RowChange& change : changes)
        if (change.row == from && change.table == table) change.row = to;
}

}  // namespace

RowChangeRecorder::RowChangeRecorder(Database& database)
    : database_(&database), outer_(database.impl().file->writer().note(&changes_)) {}

RowChangeRecorder::~RowChangeRecorder() {
    database_->impl().file->writer().note(outer_);
}

RowChanges RowChangeRecorder::take() {
    return std::exchange(changes_, {});
}

void takeBack(Database& database, const RowChanges& changes, std::vector<RowChanges*> earlier) {
    RowChanges left = changes;
    while (!left.empty()) {
        const RowChange change = std::move(left.back());
        left.pop_back();
        Table& table = database.table(change.table);
        if (change.after) requireAsLeft(table, change);
        if (!change.before) {
            table.erase(change.row);
        } else if (change.after) {
            table.update(change.row, allOf(*change.before));
        } else {
            const RowId row = table.insert(allOf(*change.before));
            rename(left, change.table, change.row, row);
            for (RowChanges* more : earlier) rename(*more, change.table, change.row, row);
        }
    }
}

}  // namespace stelvan::jet
