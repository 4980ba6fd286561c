// Where a record set's rows come from, and where its changes go to.
//
// Rows are named by their place. Failures are jet::Error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "jet/database.h"
#include "jet/rows/value.h"

namespace stelvan::db {

/// The values of one row, one for each field.
using Row = std::vector<jet::Value>;

/// A field's position and its new value.
using FieldChange = std::pair<std::size_t, jet::Value>;

/// Rows at one moment; nothing for one that is gone, or that the query would no longer choose.
struct RowsNow {
    std::uint64_t moment = 0;
    std::vector<std::optional<Row>> rows;
};

/// Places at one moment.
struct PlacesNow {
    std::uint64_t moment = 0;
    std::vector<jet::RowId> places;
};

/// What a record set knows of a row that it is about to write over.
struct KnownRow {
    jet::RowId place;
    std::optional<Row> asRead;  // nothing for a row that was never looked at
    bool own = false;           // written by the record set: it may be none of the query's any more
};

class RowWriter {
public:
    virtual ~RowWriter() = default;

    /// The value as the field will hold it. Throws for what it cannot take.
    [[nodiscard]] virtual jet::Value converted(std::size_t field, jet::Value value) = 0;
    /// A row of default values.
    [[nodiscard]] virtual Row newRow() = 0;
    virtual jet::RowId insert(const Row& row) = 0;
    /// Throws RowGone, and RowChanged when the row is not as it was read or the query would no
    /// longer choose it.
    virtual void update(const KnownRow& row, const std::vector<FieldChange>& changes) = 0;
    /// The same.
    virtual void erase(const KnownRow& row) = 0;
    /// After a change: what to take back in memory if the unit of work that it was part of does not
    /// reach the file. Forgotten where the change was a unit of its own.
    virtual void onRollback(std::function<void()> undo) = 0;
};

class RowSource {
public:
    virtual ~RowSource() = default;

    [[nodiscard]] virtual const std::vector<std::string>& fields() const = 0;
    /// The rows at these places, which the query chose at the moment `chosen`; without a moment
    /// they count whether it would choose them or not.
    [[nodiscard]] virtual RowsNow read(std::span<const jet::RowId> places,
                                       std::optional<std::uint64_t> chosen) = 0;
    /// Looks at the file anew: the places of all rows that the query chooses now, ascending.
    [[nodiscard]] virtual PlacesNow chosenNow() = 0;
    /// Null where the rows cannot be written.
    [[nodiscard]] virtual RowWriter* writer() = 0;
};

}  // namespace stelvan::db
