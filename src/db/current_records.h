// The slot that holds the record set on screen and the position in it.
#pragma once

#include <cstdint>
#include <memory>

#include "db/record_set.h"

namespace stelvan::db {

struct CurrentRecords {
    std::shared_ptr<Recordset> records;  // none before a category was loaded
    std::int32_t position = 0;           // 1-based; 0 when no record is shown

    /// True when the cursor stands on a record.
    [[nodiscard]] bool onRecord() const;
    /// Cancels pending changes when on a record, closes when open, drops.
    void drop();
};

}  // namespace stelvan::db
