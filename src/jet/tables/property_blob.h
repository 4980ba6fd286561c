// The property blob (LvProp) of a catalogue row: named properties of an object and of its columns.
//
// Only what changes how data are treated is understood. Reading skips what it does not know; a blob
// that is cut or contradicts itself throws Corrupt.
//
//   OFFSET  SIZE  MEANING, of the blob: "MR2" and a zero, then blocks
//        0     4  length of the block
//        4     2  kind: 0x80 names, 0 properties of the object, 1 of a column
//        6        names: size in bytes, UTF-16; or
//        6     4  length of the owner's part, then the column's name: size in bytes, UTF-16
//      ...        properties:
//        0     2  length of the property
//        2     1  1 where it was defined with the table
//        3     1  type of the value
//        4     2  which of the names
//        6     2  length of the value, which follows
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "jet/disk/bytes.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

namespace property {
inline constexpr std::size_t kMagicSize = 4;  // "MR2" and a zero
inline constexpr std::size_t kBlockHeader = 6;
inline constexpr std::uint16_t kNames = 0x0080;
inline constexpr std::uint16_t kObject = 0x0000;
inline constexpr std::uint16_t kColumn = 0x0001;
inline constexpr std::size_t kEntryHeader = 8;
}  // namespace property

/// Sets required, allowZeroLength and defaultValue of the columns that the blob names.
void applyProperties(Bytes blob, TableInfo& table);

/// The text of a property of the object itself; nothing where it has none of that name.
[[nodiscard]] std::optional<std::string> textProperty(Bytes blob, std::string_view name);

/// The blob of a new table; empty where no column has a property that is worth one.
[[nodiscard]] Blob makeProperties(const TableInfo& table);

}  // namespace stelvan::jet
