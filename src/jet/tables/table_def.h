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

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

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

struct TableDef : RowLayout {
    PageNumber page = 0;
    std::vector<RealIndexDef> trees;
    std::vector<LogicalIndexDef> logical;
    RecordPointer ownedMap;
    RecordPointer freeMap;
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

}  // namespace stelvan::jet
