// The bytes of a table's definition: where everything stands, and nothing else.
//
// A definition is the whole of its first page, followed by bytes 8 to 4095 of each further one; its
// parts follow each other across the borders of pages.
//
//   OFFSET  SIZE  MEANING, of a page
//        0     2  02 01
//        2     2  free bytes behind the definition, on its last page
//        4     4  next page, 0 on the last
//
//   OFFSET  SIZE  MEANING, of a definition
//        8     4  its length
//       12     4  a constant
//       16     4  rows
//       20     4  the AutoNumber given out last, then the step at 24
//       40     1  'N' a user's table, 'S' the engine's
//       41     2  columns that it has ever had: the next column number
//       43     2  variable columns that it has ever had: the next variable index
//       45     2  columns
//       47     4  logical indexes
//       51     4  real indexes
//       55     4  record pointer to the map of its pages, then at 59 of those with room
//       63  12*r  statistics of the real indexes: keys when built, distinct keys at 4
//      ...  25*c  column blocks; then their names: size in bytes, UTF-16
//      ...  52*r  real indexes
//      ...  28*l  logical indexes; then their names
//      ...        10 bytes for each long-value column: its number, pointers to its two maps; FF FF
//
//   OFFSET  SIZE  MEANING, of a column block      OFFSET  SIZE  MEANING, of a real index
//        0     1  type                                 0     4  a constant
//        1     4  a constant                           4    30  10 x column number, 1 ascending
//        5     2  number                              34     4  record pointer to its map
//        7     2  variable index                      38     4  root page
//        9     2  position shown to users             46     1  flags
//       11     4  order of texts, version at 14;
//                 Numeric: precision, scale       OFFSET  SIZE  MEANING, of a logical index
//       15     1  flags (column_flag)                  4     4  number, never used again
//       16     1  01: compressed texts                 8     4  position of its real index
//       21     2  offset in the fixed part            12     1  side in a relationship
//       23     2  length in bytes                     13     4  number of its partner, or -1
//                                                     17     4  definition of the other table
//                                                     21     2  cascades of updates, of deletes
//                                                     23     1  kind
#pragma once

#include <cstddef>
#include <cstdint>

namespace stelvan::jet {

/// Constant words that stand in definitions.
inline constexpr std::uint32_t kDefinitionMark = 1625;
inline constexpr std::uint32_t kRealIndexMark = 1923;

namespace definition {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kNext = 4;
inline constexpr std::size_t kPageHeader = 8;  // on each further page
inline constexpr std::size_t kLength = 8;
inline constexpr std::size_t kMark = 12;
inline constexpr std::size_t kRows = 16;
inline constexpr std::size_t kAutoNumber = 20;
inline constexpr std::size_t kAutoNumberStep = 24;
inline constexpr std::size_t kKind = 40;
inline constexpr std::size_t kMaxColumns = 41;
inline constexpr std::size_t kVariableColumns = 43;
inline constexpr std::size_t kColumns = 45;
inline constexpr std::size_t kLogicalIndexes = 47;
inline constexpr std::size_t kRealIndexes = 51;
inline constexpr std::size_t kOwnedMap = 55;
inline constexpr std::size_t kFreeMap = 59;
inline constexpr std::size_t kStatistics = 63;
inline constexpr std::uint8_t kUserTable = 0x4E;
inline constexpr std::uint8_t kSystemTable = 0x53;
inline constexpr std::uint16_t kEnd = 0xFFFF;  // of the list of long-value columns
inline constexpr std::size_t kTailEntrySize = 10;
inline constexpr std::size_t kMaxIndexes = 32;
inline constexpr std::size_t kMaxNameLength = 64;  // UTF-16 units
}  // namespace definition

namespace statistics {
inline constexpr std::size_t kSize = 12;
inline constexpr std::size_t kDistinct = 4;
}  // namespace statistics

namespace column_block {
inline constexpr std::size_t kSize = 25;
inline constexpr std::size_t kType = 0;
inline constexpr std::size_t kMark = 1;
inline constexpr std::size_t kNumber = 5;
inline constexpr std::size_t kVariableIndex = 7;
inline constexpr std::size_t kOrdinal = 9;
inline constexpr std::size_t kPrecision = 11;  // Numeric
inline constexpr std::size_t kScale = 12;      // Numeric
inline constexpr std::size_t kLocale = 11;
inline constexpr std::size_t kSortVersion = 14;
inline constexpr std::size_t kFlags = 15;
inline constexpr std::size_t kExtraFlags = 16;
inline constexpr std::size_t kFixedOffset = 21;
inline constexpr std::size_t kLength = 23;
inline constexpr std::uint8_t kCompressed = 0x01;  // extra flag
}  // namespace column_block

namespace real_index {
inline constexpr std::size_t kSize = 52;
inline constexpr std::size_t kMark = 0;
inline constexpr std::size_t kColumns = 4;
inline constexpr std::size_t kColumnSize = 3;
inline constexpr std::size_t kColumnCount = 10;
inline constexpr std::uint16_t kUnused = 0xFFFF;
inline constexpr std::uint8_t kAscending = 1;
inline constexpr std::size_t kMap = 34;
inline constexpr std::size_t kRoot = 38;
inline constexpr std::size_t kFlags = 46;
inline constexpr std::uint8_t kUnique = 0x01;
inline constexpr std::uint8_t kIgnoreNulls = 0x02;
inline constexpr std::uint8_t kRequired = 0x08;
inline constexpr std::uint8_t kAlways = 0x80;
}  // namespace real_index

namespace logical_index {
inline constexpr std::size_t kSize = 28;
inline constexpr std::size_t kMark = 0;
inline constexpr std::size_t kNumber = 4;
inline constexpr std::size_t kReal = 8;
inline constexpr std::size_t kSide = 12;
inline constexpr std::size_t kPartner = 13;
inline constexpr std::size_t kOtherTable = 17;
inline constexpr std::size_t kCascadeUpdates = 21;
inline constexpr std::size_t kCascadeDeletes = 22;
inline constexpr std::size_t kKind = 23;
inline constexpr std::uint8_t kNoSide = 0;
inline constexpr std::uint8_t kParentSide = 1;
inline constexpr std::uint8_t kChildSide = 2;
inline constexpr std::uint8_t kNoCascade = 4;  // of an index that belongs to no relationship
inline constexpr std::uint8_t kPlain = 0;
inline constexpr std::uint8_t kPrimary = 1;
inline constexpr std::uint8_t kForeign = 2;
}  // namespace logical_index

}  // namespace stelvan::jet
