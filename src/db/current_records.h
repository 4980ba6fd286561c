// The record set on screen and the position in it, and the data-source control that yields it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "db/record_set.h"

namespace stelvan::db {

/// The data-source control AdoGEM: given a connection text and a record source, it yields a record
/// set.
struct DataSource {
    std::string connectionText;
    std::string recordSource;
    CursorType cursorType = CursorType::Static;
    LockType lockType = LockType::Optimistic;

    /// Opens the record source anew. Throws RunTimeError.
    [[nodiscard]] std::shared_ptr<Recordset> refresh() const;
};

/// Grid and record view show the same rows: the one record set that is held.
struct CurrentRecords {
    DataSource adoGEM;
    std::shared_ptr<Recordset> records;  // none before a category was loaded
    std::int32_t position = 0;           // 1-based; 0 when no record is shown

    /// True when the cursor stands on a record.
    [[nodiscard]] bool onRecord() const;
    /// Records that are there; 0 where none are held.
    [[nodiscard]] std::int32_t count() const;
    /// Cancels pending changes when on a record, closes when open, drops.
    void drop();
};

}  // namespace stelvan::db
