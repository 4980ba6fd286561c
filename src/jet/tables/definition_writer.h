// Table definitions as bytes: made new, taken apart and joined again, and written over their pages.
//
// Parts that are not understood travel along unchanged when a definition is rewritten.
#pragma once

#include <string>
#include <vector>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/page_allocation.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// The sections of a definition, in their order.
struct DefinitionParts {
    Blob head;        // up to the statistics
    Blob statistics;  // of each real index
    Blob columns;     // blocks, then names
    Blob realIndexes;
    Blob logicalIndexes;
    Blob logicalNames;
    Blob tail;  // long-value columns, with their end mark

    /// Adds a real index and gives its position.
    std::uint32_t addRealIndex(const RealIndexDef& index, const TableInfo& info);
    void addLogicalIndex(const LogicalIndexDef& index, const std::string& name);
    [[nodiscard]] Blob join() const;
};

/// In which order the blocks of columns and indexes stand: system tables are sorted by name.
enum class BlockOrder { ByNumber, ByName };

[[nodiscard]] DefinitionParts makeDefinition(const TableDef& table, BlockOrder order);
/// Throws Corrupt.
[[nodiscard]] DefinitionParts splitDefinition(const DefinitionBytes& bytes);

/// Writes a definition over the pages that it has, taking more or giving some back as needed. The
/// first page stays the first.
void writeDefinition(PageFile& file, const std::vector<PageNumber>& pages, const Blob& bytes);

}  // namespace stelvan::jet
