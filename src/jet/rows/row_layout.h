// How the rows of one table are stored, as far as a row's bytes go: which columns are where.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/pages/format.h"
#include "jet/pages/record_pointer.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

/// How a column is stored; stands beside the ColumnInfo of the same position.
struct ColumnStorage {
    std::uint16_t variableIndex = 0;  // variable columns
    std::uint16_t fixedOffset = 0;    // fixed columns: offset within the fixed part
    std::uint16_t size = 0;           // fixed columns: bytes in the fixed part (Boolean: none)
    std::uint8_t flags = 0;
    RecordPointer ownedMap;  // Memo and Ole: pages of its long values
    RecordPointer freeMap;   // may be none
};

struct RowLayout {
    TableInfo info;
    std::vector<ColumnStorage> storage;
    std::uint16_t maxColumns = 0;
    std::uint16_t variableColumns = 0;
    std::size_t fixedSize = 0;  // bytes of the fixed part

    [[nodiscard]] bool isFixed(std::size_t column) const {
        return (storage[column].flags & column_block::kFixed) != 0;
    }
};

}  // namespace stelvan::jet
