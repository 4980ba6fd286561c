// The items that the GEM standard prescribes, as the shipped template holds them.
#pragma once

#include <span>
#include <string_view>

#include "model/core/model.h"

namespace stelvan::model {

/// One table's rows as texts: `cells` row by row, each with one entry for each column; a cell that
/// is Null has no data().
struct StandardTable {
    std::string_view table;
    std::span<const std::string_view> columns;
    std::span<const std::string_view> cells;
};

/// All tables of the shipped template that hold rows.
[[nodiscard]] std::span<const StandardTable> standardTables();

/// The standard's rows of one part, all values texts; not present where it has none.
[[nodiscard]] Table standardItems(Part part);

}  // namespace stelvan::model
