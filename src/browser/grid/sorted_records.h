// The order in which a grid shows records that are sorted by a column.
#pragma once

#include <cstdint>
#include <vector>

#include "db/record_set.h"

namespace stelvan::browser {

/// Stored records by number (from 0), sorted by a field: numbers by their value and before all
/// texts, texts as the file orders them, what is empty or gone last of all, either way round.
/// Records of the same value keep their order. Throws RunTimeError.
[[nodiscard]] std::vector<std::int32_t> sortedRecords(const db::Recordset& records,
                                                      std::size_t field, bool descending);

}  // namespace stelvan::browser
