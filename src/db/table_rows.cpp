#include "db/table_rows.h"

#include <algorithm>

#include "jet/rows/conversion.h"
#include "sql/default_value.h"

namespace stelvan::db {

TableRows::TableRows(std::shared_ptr<OpenDatabase> database, const std::string& table,
                     jet::ColumnSet columns)
    : database_(std::move(database)),
      table_(&database_->database().table(table)),
      info_(table_->info()),
      columns_(std::move(columns)) {
    for (const std::size_t column : columns_) fields_.push_back(info_.columns[column].name);
}

void TableRows::reopen() {
    auto fresh = std::make_shared<OpenDatabase>(database_->path(), database_->database().access());
    jet::Table& found = fresh->database().table(info_.name);
    const std::vector<jet::ColumnInfo>& now = found.info().columns;
    const auto same = [](const jet::ColumnInfo& a, const jet::ColumnInfo& b) {
        return a.name == b.name && a.number == b.number && a.type == b.type;
    };
    if (!std::equal(now.begin(), now.end(), info_.columns.begin(), info_.columns.end(), same))
        throw jet::Error::of(jet::ErrorKind::RowChanged, info_.name);
    database_ = std::move(fresh);
    table_ = &found;
}

std::vector<std::optional<Row>> TableRows::read(std::span<const jet::RowId> places) {
    const auto scope = database_->database().beginRead();
    std::vector<std::optional<Row>> rows;
    rows.reserve(places.size());
    for (const jet::RowId place : places) rows.push_back(readOne(place));
    return rows;
}

std::optional<Row> TableRows::readOne(jet::RowId place) {
    const std::unique_ptr<jet::Cursor> cursor = table().row(place, columns_);
    if (cursor == nullptr) return std::nullopt;
    return jet::valuesOf(*cursor, columns_);
}

std::vector<jet::RowId> TableRows::stillThere(std::vector<jet::RowId> places) {
    reopen();
    std::sort(places.begin(), places.end());
    std::vector<jet::RowId> found;
    found.reserve(places.size());
    auto wanted = places.begin();
    for (const auto cursor = table().scan({}); wanted != places.end() && cursor->next();) {
        const jet::RowId place = cursor->rowId();
        wanted = std::lower_bound(wanted, places.end(), place);
        if (wanted != places.end() && *wanted == place) found.push_back(place);
    }
    return found;
}

jet::Value TableRows::converted(std::size_t field, jet::Value value) {
    return jet::convertTo(info_, columns_[field], std::move(value));
}

Row TableRows::newRow() {
    Row row;
    for (const std::size_t column : columns_)
        row.push_back(sql::defaultValue(info_.columns[column]));
    return row;
}

jet::RowId TableRows::insert(const Row& row) {
    reopen();
    std::vector<jet::ColumnValue> values;
    for (std::size_t column = 0; column < info_.columns.size(); ++column) {
        const auto field = std::find(columns_.begin(), columns_.end(), column);
        jet::Value value = field != columns_.end()
                               ? row[static_cast<std::size_t>(field - columns_.begin())]
                               : sql::defaultValue(info_.columns[column]);
        // An AutoNumber that nobody set is the file's to give.
        if (info_.columns[column].autoNumber && jet::isNull(value)) continue;
        values.emplace_back(column, std::move(value));
    }
    return table().insert(values);
}

void TableRows::requireUnchanged(jet::RowId place, const std::optional<Row>& asRead) {
    const std::optional<Row> now = readOne(place);
    if (!now) throw jet::Error::of(jet::ErrorKind::RowGone, info_.name);
    if (asRead && *asRead != *now) throw jet::Error::of(jet::ErrorKind::RowChanged, info_.name);
}

void TableRows::update(jet::RowId place, const Row& asRead,
                       const std::vector<FieldChange>& changes) {
    reopen();
    std::vector<jet::ColumnValue> values;
    values.reserve(changes.size());
    for (const auto& [field, value] : changes) values.emplace_back(columns_[field], value);
    jet::UnitOfWork unit(database_->database());
    requireUnchanged(place, asRead);
    table().update(place, values);
    unit.commit();
}

void TableRows::erase(jet::RowId place, const std::optional<Row>& asRead) {
    reopen();
    jet::UnitOfWork unit(database_->database());
    requireUnchanged(place, asRead);
    table().erase(place);
    unit.commit();
}

}  // namespace stelvan::db
