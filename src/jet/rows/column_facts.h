// What a table is to those who read and write its rows: columns, indexes, row ids. Plain facts, as
// the file states them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jet/disk/page.h"
#include "jet/rows/value.h"

namespace stelvan::jet {

/// Where a record is: its first page and slot, which stay the same while the record lives.
struct RowId {
    PageNumber page = 0;
    std::uint8_t slot = 0;
    friend auto operator<=>(const RowId&, const RowId&) = default;
    [[nodiscard]] std::int64_t packed() const {
        return (static_cast<std::int64_t>(page) << 8) | slot;
    }
    static RowId unpack(std::int64_t packed) {
        return {static_cast<PageNumber>(packed >> 8), static_cast<std::uint8_t>(packed & 0xFF)};
    }
};

/// A text index or comparison order; only General Legacy (0x0409, version 0) can be written.
struct SortOrder {
    std::uint16_t locale = 0x0409;
    std::uint8_t version = 0;
    friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

struct ColumnInfo {
    std::string name;
    ColumnType type = ColumnType::Text;
    std::uint16_t number = 0;    // never reused within a table
    std::uint16_t length = 0;    // bytes as stored in the definition; Text: 2 x characters
    std::uint8_t precision = 0;  // Numeric
    std::uint8_t scale = 0;      // Numeric
    bool fixedLength = false;
    bool autoNumber = false;
    bool compressed = false;      // "compressed Unicode"
    bool required = false;        // property Required
    bool allowZeroLength = true;  // property AllowZeroLength
    std::string defaultValue;  // property DefaultValue: expression text, empty where there is none
    SortOrder order;           // text columns
};

struct IndexColumn {
    std::size_t column = 0;  // position in TableInfo::columns
    bool ascending = true;
};

/// A logical index (several may share one tree).
struct IndexInfo {
    std::string name;
    std::vector<IndexColumn> columns;
    bool primary = false;
    bool unique = false;
    bool required = false;
    bool ignoreNulls = false;
    bool foreign = false;    // belongs to a relationship
    std::uint32_t tree = 0;  // position of the real index within the table
};

struct TableInfo {
    std::string name;
    std::uint32_t rows = 0;  // as counted in the definition
    bool system = false;
    std::vector<ColumnInfo> columns;  // ascending column number
    std::vector<IndexInfo> indexes;

    /// Position of a column by name, letter case ignored (ASCII and beyond as the file's order
    /// does).
    [[nodiscard]] std::optional<std::size_t> findColumn(std::string_view columnName) const;
};

/// Which columns a reader wants, as positions in TableInfo::columns; nothing else is decoded.
using ColumnSet = std::vector<std::size_t>;

/// New values for some columns of a row.
using ColumnValue = std::pair<std::size_t, Value>;

/// Every column of a table.
[[nodiscard]] ColumnSet allColumns(const TableInfo& info);

/// Length in bytes that a column of this type always has, where there is one.
[[nodiscard]] std::optional<std::uint16_t> naturalSize(ColumnType type);
[[nodiscard]] inline bool isLongValue(ColumnType type) {
    return type == ColumnType::Memo || type == ColumnType::Ole;
}
[[nodiscard]] inline bool isText(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

}  // namespace stelvan::jet
