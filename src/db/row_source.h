// Where a record set's rows come from, and where its changes go to.
//
// Rows are named by their place. Failures are jet::Error.
#pragma once

#include <cstddef>
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

class RowWriter {
public:
    virtual ~RowWriter() = default;

    /// The value as the field will hold it. Throws for what it cannot take.
    [[nodiscard]] virtual jet::Value converted(std::size_t field, jet::Value value) = 0;
    /// A row of default values.
    [[nodiscard]] virtual Row newRow() = 0;
    virtual jet::RowId insert(const Row& row) = 0;
    /// Throws RowGone, and RowChanged when the row is not as it was read.
    virtual void update(jet::RowId place, const Row& asRead,
                        const std::vector<FieldChange>& changes) = 0;
    /// The same; `asRead` is missing for a row that was never looked at.
    virtual void erase(jet::RowId place, const std::optional<Row>& asRead) = 0;
    /// After a change: what to take back in memory if the unit of work that it was part of does not
    /// reach the file. Forgotten where the change was a unit of its own.
    virtual void onRollback(std::function<void()> undo) = 0;
};

class RowSource {
public:
    virtual ~RowSource() = default;

    [[nodiscard]] virtual const std::vector<std::string>& fields() const = 0;
    /// The rows at these places as they are at one moment; nothing for one that is gone.
    [[nodiscard]] virtual std::vector<std::optional<Row>> read(
        std::span<const jet::RowId> places) = 0;
    /// Looks at the file anew, and gives those of `places` (in any order) that still hold a row,
    /// ascending.
    [[nodiscard]] virtual std::vector<jet::RowId> stillThere(std::vector<jet::RowId> places) = 0;
    /// Null where the rows cannot be written.
    [[nodiscard]] virtual RowWriter* writer() = 0;
};

}  // namespace stelvan::db
