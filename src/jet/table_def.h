// A table's definition as its TDEF pages state it: columns, trees, logical indexes, maps.
//
// Decoding checks every number against the structure, so that what a TableDef says can be used
// without further checks. Counters that change with the rows (row count, last AutoNumber, distinct
// keys) are not kept here but read from and written to the first page, see TableCounters.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jet/bytes.h"
#include "jet/database.h"
#include "jet/format.h"
#include "jet/page_file.h"

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

/// A real (physical) index: one tree.
struct RealIndexDef {
    std::vector<IndexColumn> columns;
    RecordPointer map;
    PageNumber root = 0;
    std::uint8_t flags = 0;

    [[nodiscard]] bool unique() const { return (flags & real_index::kUnique) != 0; }
    [[nodiscard]] bool ignoreNulls() const { return (flags & real_index::kIgnoreNulls) != 0; }
    [[nodiscard]] bool required() const { return (flags & real_index::kRequired) != 0; }
};

/// A logical index; stands beside the IndexInfo of the same position.
struct LogicalIndexDef {
    std::uint32_t number = 0;
    std::uint32_t real = 0;
    std::uint8_t side = 0;
    std::int32_t partner = -1;
    PageNumber otherTable = 0;
    std::uint8_t cascadeUpdates = logical_index::kNoCascade;
    std::uint8_t cascadeDeletes = logical_index::kNoCascade;
    std::uint8_t kind = 0;
};

struct TableDef {
    PageNumber page = 0;
    TableInfo info;
    std::vector<ColumnStorage> storage;
    std::vector<RealIndexDef> trees;
    std::vector<LogicalIndexDef> logical;
    std::uint16_t maxColumns = 0;
    std::uint16_t variableColumns = 0;
    std::size_t fixedSize = 0;  // bytes of the fixed part
    RecordPointer ownedMap;
    RecordPointer freeMap;

    [[nodiscard]] bool isFixed(std::size_t column) const {
        return (storage[column].flags & column_block::kFixed) != 0;
    }
};

/// A definition's bytes, joined over its chain of pages; guards against chains that return to
/// themselves.
struct DefinitionBytes {
    Blob bytes;
    std::vector<PageNumber> pages;
};
[[nodiscard]] DefinitionBytes readDefinitionBytes(PageFile& file, PageNumber first);

/// Decodes the definition that begins at `page`. Names of columns and indexes, not of the table;
/// properties are the catalogue's business. Throws Corrupt.
[[nodiscard]] TableDef readTableDef(PageFile& file, PageNumber page);

/// Length in bytes that a column of this type always has, where there is one.
[[nodiscard]] std::optional<std::uint16_t> naturalSize(ColumnType type);
[[nodiscard]] inline bool isLongValue(ColumnType type) {
    return type == ColumnType::Memo || type == ColumnType::Ole;
}
[[nodiscard]] inline bool isText(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

}  // namespace stelvan::jet
