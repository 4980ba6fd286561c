// How the rows of one table are stored, as far as a row's bytes go: which columns are where.
//
//   SIZE       MEANING
//   2          number of columns that the table had had when the row was written, C
//   F          columns of fixed length, each at its offset
//   ...        columns of variable length, by ascending index, without gaps
//   2          where the last of them ends                  } absent where the table never had
//   2*V        where each begins, the last index first      } a column of variable length
//   2          number of them, V                            }
//   (C+7)/8    a bit for each column number, the lowest first: it has a value (Boolean: it is set)
// Places count from the start of the row. A column whose number is not below C is null.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/pages/record_pointer.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

namespace row {
inline constexpr std::size_t kFixed = 2;  // after the column count
inline constexpr std::size_t kMaxSize = 4060;
inline constexpr std::size_t kPointerSize = 4;
inline constexpr std::size_t kMaxColumns = 255;
}  // namespace row

/// Bits of ColumnStorage::flags.
namespace column_flag {
inline constexpr std::uint8_t kFixed = 0x01;
inline constexpr std::uint8_t kUpdatable = 0x02;
inline constexpr std::uint8_t kAutoNumber = 0x04;
inline constexpr std::uint8_t kSystem = 0x10;
inline constexpr std::uint8_t kSecurityId = 0x20;
inline constexpr std::uint8_t kAutoGuid = 0x40;
}  // namespace column_flag

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
        return (storage[column].flags & column_flag::kFixed) != 0;
    }
};

}  // namespace stelvan::jet
