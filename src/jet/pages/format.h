// Where everything stands in a Jet 4 file: offsets, sizes and codes, each written down once.
//
// All numbers are little-endian unless a name says otherwise. Offsets count from the start of the
// structure that the enclosing namespace names.
#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/disk/page.h"

namespace stelvan::jet {

/// Fixed places in a database.
inline constexpr PageNumber kGlobalMapPage = 1;
inline constexpr std::uint8_t kGlobalMapRow = 0;
inline constexpr PageNumber kObjectsPage = 2;        // MSysObjects
inline constexpr PageNumber kAccessEntriesPage = 3;  // MSysACEs
inline constexpr PageNumber kQueriesPage = 4;        // MSysQueries
inline constexpr PageNumber kRelationshipsPage = 5;  // MSysRelationships
inline constexpr PageNumber kFirstUsageMapPage = 6;

/// Constant words that stand in definitions.
inline constexpr std::uint32_t kDefinitionMark = 1625;
inline constexpr std::uint32_t kRealIndexMark = 1923;

namespace header {
inline constexpr std::size_t kEngineName = 4;  // 15 characters and a zero
inline constexpr std::size_t kEngineNameSize = 15;
inline constexpr std::size_t kVersion = 0x14;
inline constexpr std::size_t kMasked = 0x18;  // exclusive-or with the RC4 stream of kMaskKey
inline constexpr std::size_t kMaskedSize = 128;
inline constexpr std::uint32_t kMaskKey = 0x6B39DAC7;
inline constexpr std::size_t kGlobalMap = 0x18;
inline constexpr std::size_t kSecondMap = 0x1C;
inline constexpr std::size_t kObjects = 0x20;
inline constexpr std::size_t kAccessEntries = 0x24;
inline constexpr std::size_t kQueries = 0x28;
inline constexpr std::size_t kRelationships = 0x2C;
inline constexpr std::size_t kCodePage = 0x3C;
inline constexpr std::size_t kEncryptionKey = 0x3E;
inline constexpr std::size_t kPassword = 0x42;
inline constexpr std::size_t kPasswordSize = 40;
inline constexpr std::size_t kEngineBuild = 0x6A;
inline constexpr std::size_t kSortLocale = 0x6E;
inline constexpr std::size_t kSortVersion = 0x71;
inline constexpr std::size_t kCreated = 0x72;
inline constexpr std::size_t kTail = 0x98;      // 54 06 00 00
inline constexpr std::size_t kTailText = 0x9C;  // "4.0" and a zero
}  // namespace header

namespace data_page {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kOwner = 4;  // definition page; 0: usage maps; kLongValueOwner
inline constexpr std::size_t kStamp = 8;  // of a chain of long-value rows that begins here
inline constexpr std::size_t kSlotCount = 12;
inline constexpr std::size_t kSlots = 14;
inline constexpr std::size_t kSlotSize = 2;
inline constexpr std::size_t kMaxSlots = 255;
inline constexpr std::uint16_t kOffsetMask = 0x1FFF;
inline constexpr std::uint16_t kPointer =
    0x4000;  // the row is elsewhere, a record pointer stands here
inline constexpr std::uint16_t kHidden = 0x8000;  // reached through a pointer only
inline constexpr std::uint16_t kDeleted = 0xC000;
inline constexpr std::uint16_t kFlagMask = 0xC000;
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"
inline constexpr std::size_t kEmptyFree = kPageSize - kSlots;
}  // namespace data_page

namespace usage_map {
inline constexpr std::uint8_t kInline = 0;
inline constexpr std::uint8_t kReference = 1;
inline constexpr std::size_t kForm = 0;
inline constexpr std::size_t kStart = 1;       // inline: first page of the bitmap
inline constexpr std::size_t kBits = 5;        // inline: the bitmap
inline constexpr std::size_t kReferences = 1;  // reference: page numbers of bitmap pages
inline constexpr std::size_t kNewRowSize = 69;
inline constexpr std::size_t kBitmapHeader = 4;  // on a bitmap page
inline constexpr PageNumber kPagesPerBitmap = (kPageSize - kBitmapHeader) * 8;
}  // namespace usage_map

namespace row {
inline constexpr std::size_t kFixed = 2;  // after the column count
inline constexpr std::size_t kMaxSize = 4060;
inline constexpr std::size_t kPointerSize = 4;
}  // namespace row

namespace long_value {
inline constexpr std::size_t kReferenceSize = 12;
inline constexpr std::size_t kLengthAndKind = 0;
inline constexpr std::size_t kPointer = 4;
inline constexpr std::size_t kStamp = 8;
inline constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
inline constexpr std::uint32_t kKindMask = 0xC0000000;
inline constexpr std::uint32_t kInline = 0x80000000;
inline constexpr std::uint32_t kSingle = 0x40000000;
inline constexpr std::uint32_t kChain = 0x00000000;
inline constexpr std::size_t kNext = 4;  // record pointer in front of each chunk of a chain
inline constexpr std::size_t kMaxRow = 4076;
inline constexpr std::size_t kChunk = kMaxRow - kNext;
inline constexpr std::size_t kMaxInline = 64;  // bytes before compression
inline constexpr std::size_t kMaxCompressedCharacters = 1024;
}  // namespace long_value

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
inline constexpr std::size_t kMaxColumnCount = 255;
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
inline constexpr std::uint8_t kFixed = 0x01;
inline constexpr std::uint8_t kUpdatable = 0x02;
inline constexpr std::uint8_t kAutoNumber = 0x04;
inline constexpr std::uint8_t kSystem = 0x10;
inline constexpr std::uint8_t kSecurityId = 0x20;
inline constexpr std::uint8_t kAutoGuid = 0x40;
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

namespace index_page {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kDefinition = 4;
inline constexpr std::size_t kPrevious = 12;
inline constexpr std::size_t kNext = 16;
inline constexpr std::size_t kTailChild = 20;
inline constexpr std::size_t kPrefix = 24;
inline constexpr std::size_t kLevel = 26;
inline constexpr std::size_t kMask = 27;
inline constexpr std::size_t kMaskSize = 453;
inline constexpr std::size_t kEntries = 480;
inline constexpr std::size_t kEntriesSize = kPageSize - kEntries;
inline constexpr std::size_t kRowPointer = 4;  // big-endian page and slot after the key
inline constexpr std::size_t kChild = 4;       // big-endian child page after that, in nodes
}  // namespace index_page

namespace property {
inline constexpr std::size_t kMagicSize = 4;  // "MR2" and a zero
inline constexpr std::size_t kBlockHeader = 6;
inline constexpr std::uint16_t kNames = 0x0080;
inline constexpr std::uint16_t kObject = 0x0000;
inline constexpr std::uint16_t kColumn = 0x0001;
inline constexpr std::size_t kEntryHeader = 8;
}  // namespace property

/// Catalogue codes.
namespace catalogue {
inline constexpr std::int32_t kTables = 0x0F000001;  // parent of tables and queries
inline constexpr std::int32_t kDatabases = 0x0F000002;
inline constexpr std::int32_t kRelationships = 0x0F000003;  // parent of relationship objects
inline constexpr std::int32_t kRoot = 0x0F000000;
inline constexpr std::int32_t kDatabase = 0x10000000;  // MSysDb
inline constexpr std::int32_t kIdMask = 0x00FFFFFF;    // a table's Id is its definition page
inline constexpr std::int32_t kTypeTable = 1;
inline constexpr std::int32_t kTypeDatabase = 2;
inline constexpr std::int32_t kTypeContainer = 3;
inline constexpr std::int32_t kTypeQuery = 5;
inline constexpr std::int32_t kTypeRelationship = 8;
inline constexpr std::uint32_t kSystemObject = 0x80000000;
inline constexpr std::uint32_t kAccessObject = 0x00000002;
}  // namespace catalogue

/// Bits of MSysRelationships.grbit.
namespace relationship {
inline constexpr std::uint32_t kOneToOne = 0x00000001;
inline constexpr std::uint32_t kNotEnforced = 0x00000002;
inline constexpr std::uint32_t kCascadeUpdates = 0x00000100;
inline constexpr std::uint32_t kCascadeDeletes = 0x00001000;
inline constexpr std::uint32_t kSetNullOnDelete = 0x00002000;
}  // namespace relationship

}  // namespace stelvan::jet
