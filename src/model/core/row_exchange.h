// Rows that take over one another's values in a unique index. Indexes are judged row by row, so a
// value must be let go of before another row can have it.
#pragma once

#include <span>
#include <vector>

#include "model/core/unique_rows.h"
#include "model/core/write.h"

namespace stelvan::model {

/// A row and values that nothing else has, which it takes until its own are written.
struct ParkedRow {
    std::size_t before = 0;  // position in the table as it is
    std::vector<jet::ColumnValue> values;
};

/// The rows of `changes` whose key another one wants. Throws Refusal where no column of the index
/// has a value to spare.
[[nodiscard]] std::vector<ParkedRow> parkedRows(const jet::TableInfo& info, const Table& before,
                                                const Table& after,
                                                std::span<const WritePlan::Change> changes);

}  // namespace stelvan::model
