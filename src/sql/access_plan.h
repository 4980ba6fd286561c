// How a table answers the conditions that SQLite hands down: by a row's place, by an index, or by
// reading all.
#pragma once

#include <sqlite3.h>

#include <cstddef>

#include "jet/database.h"

namespace stelvan::sql {

struct AccessPlan {
    enum class Way { Scan, Place, Index };
    Way way = Way::Scan;
    std::size_t index = 0;       // position in TableInfo::indexes
    std::size_t keyColumns = 0;  // how many of its columns are given
    bool wholeKey = false;       // equal keys are then in stored order already
    jet::ColumnSet wanted;
};

/// Chooses by the equality constraints in `request`, and fills in what SQLite is to be told but for
/// idxNum.
[[nodiscard]] AccessPlan chooseAccess(const jet::TableInfo& table, sqlite3_index_info& request);

}  // namespace stelvan::sql
