#include "db/table_rows.h"

#include <algorithm>

#include "jet/rows/conversion.h"
#include "sql/default_value.h"

namespace stelvan::db {

TableRows::TableRows(std::shared_ptr<OpenDatabase> database, std::string sql,
                     const std::string& table, jet::ColumnSet columns)
    : database_(std::move(database)),
      sql_(std::move(sql)),
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

RowsNow TableRows::read(std::span<const jet::RowId> places, std::optional<std::uint64_t> chosen) {
    const auto scope = database_->database().beginRead();
    RowsNow now{database_->database().moment(), {}};
    now.rows.reserve(places.size());
    for (const jet::RowId place : places) now.rows.push_back(readOne(place));
    if (!chosen || *chosen == now.moment) return now;
    const std::vector<jet::RowId> still = database_->engine().stillChosen(sql_, places);
    auto next = still.begin();  // in the order of `places`
    for (std::size_t at = 0; at < places.size(); ++at) {
        if (next != still.end() && *next == places[at]) {
            ++next;
        } else {
            now.rows[at].reset();
        }
    }
    return now;
}

std::optional<Row> TableRows::readOne(jet::RowId place) {
    const std::unique_ptr<jet::Cursor> cursor = table().row(place, columns_);
    if (cursor == nullptr) return std::nullopt;
    return jet::valuesOf(*cursor, columns_);
}

PlacesNow TableRows::chosenNow() {
    reopen();
    auto rows = std::get<sql::RowPlaces>(database_->engine().select(sql_));
    std::sort(rows.places.begin(), rows.places.end());
    return {rows.moment, std::move(rows.places)};
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

void TableRows::requireUnchanged(const KnownRow& row) {
    const std::optional<Row> now = readOne(row.place);
    if (!now) throw jet::Error::of(jet::ErrorKind::RowGone, info_.name);
    const bool asRead = !row.asRead || *row.asRead == *now;
    // A row that is all as it was read answers the query as it did then.
    const bool proven = row.own || (row.asRead && columns_.size() == info_.columns.size());
    if (!asRead || (!proven && database_->engine().stillChosen(sql_, {&row.place, 1}).empty()))
        throw jet::Error::of(jet::ErrorKind::RowChanged, info_.name);
}

void TableRows::update(const KnownRow& row, const std::vector<FieldChange>& changes) {
    reopen();
    std::vector<jet::ColumnValue> values;
    values.reserve(changes.size());
    for (const auto& [field, value] : changes) values.emplace_back(columns_[field], value);
    jet::UnitOfWork unit(database_->database());
    requireUnchanged(row);
    table().update(row.place, values);
    unit.commit();
}

void TableRows::erase(const KnownRow& row) {
    reopen();
    jet::UnitOfWork unit(database_->database());
    requireUnchanged(row);
    table().erase(row.place);
    unit.commit();
}

}  // namespace stelvan::db
