// What a unit of work did to rows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jet/rows/column_facts.h"

namespace stelvan::jet {

/// One row before and after one change; values in the order of TableInfo::columns.
struct RowChange {
    std::string table;
    RowId row;
    std::optional<std::vector<Value>> before;  // nothing: the row was new
    std::optional<std::vector<Value>> after;   // nothing: the row was erased
};

/// In the order in which they were made, what relationships made follow included.
using RowChanges = std::vector<RowChange>;

}  // namespace stelvan::jet
