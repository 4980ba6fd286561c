// An enforced relationship as one of its two tables sees it, and what becomes of it when a row
// changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/disk/page.h"
#include "jet/rows/value.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// One enforced relationship, seen from one of its two tables.
struct RelationshipLink {
    bool parent = false;  // this table is the one referred to
    std::size_t logical = 0;
    PageNumber otherTable = 0;
    std::int32_t partner = 0;  // number of the other table's logical index
    std::uint8_t cascadeUpdates = 0;
    std::uint8_t cascadeDeletes = 0;
    std::vector<std::size_t> columns;  // of this table, in the order of the relationship
};
[[nodiscard]] RelationshipLink linkAt(const TableDef& table, std::size_t logical);
[[nodiscard]] std::vector<RelationshipLink> linksOf(const TableDef& table);

/// Values of the columns of a link.
using LinkKey = std::vector<Value>;

/// A link of which the key goes or changes with a row; without a new key, the row is gone.
struct TouchedLink {
    RelationshipLink link;
    LinkKey oldKey;
    LinkKey newKey;
};

}  // namespace stelvan::jet
