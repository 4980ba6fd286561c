// The property blob (LvProp) of a catalogue row: named properties of an object and of its columns.
//
// Only what changes how data are treated is understood. Reading skips what it does not know; a blob
// that is cut or contradicts itself throws Corrupt.
#pragma once

#include <string>
#include <string_view>

#include "jet/disk/bytes.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

/// Sets required, allowZeroLength and defaultValue of the columns that the blob names.
void applyProperties(Bytes blob, TableInfo& table);

/// The blob of a new table; empty where no column has a property that is worth one.
[[nodiscard]] Blob makeProperties(const TableInfo& table);

}  // namespace stelvan::jet
