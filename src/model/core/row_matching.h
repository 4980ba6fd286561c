// Which rows of a table, as it is and as it is wanted, are one.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "model/core/model.h"

namespace stelvan::model {

/// For each row of `after` its partner in `before`, by position; no row is a partner twice. Both
/// have the same columns, with values of the same types. How rows are matched: see write.h.
[[nodiscard]] std::vector<std::optional<std::size_t>> matchRows(Part part, const Table& before,
                                                                const Table& after);

}  // namespace stelvan::model
