// A new table's definition worked out from what its maker asks for: numbers, offsets, lengths and
// flags.
#pragma once

#include <string_view>

#include "jet/tables/table_def.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

/// Everything but pages and maps. Throws InvalidName, NoSuchColumn, TypeMismatch, RowTooLarge and
/// UnsupportedOrder for a table that cannot be.
[[nodiscard]] TableDef layOut(const TableSpec& spec);

/// Throws InvalidName for what cannot be a name: empty, too long, a blank in front, a forbidden
/// character.
void checkName(std::string_view name);

}  // namespace stelvan::jet
