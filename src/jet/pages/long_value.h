// Long values (Memo, Ole): 12 bytes in the row, and the data behind them, in one row of a
// long-value page, or in a chain of such rows.
//
//   OFFSET  SIZE  MEANING, in the row of the table
//        0     4  length in bits 0 to 29; above them 10 for data that follow at once, 01 for data
//                 in one row, 00 for a chain of rows
//        4     4  record pointer to the (first) row, 0 for data that follow
//        8     4  stamp of a chain: as it stands on the page where the chain begins
//       12     n  data that follow
//
//   OFFSET  SIZE  MEANING, in a row of a chain
//        0     4  record pointer to the next row, 0 in the last
//        4     n  data
#pragma once

#include "jet/disk/bytes.h"
#include "jet/disk/page_file.h"
#include "jet/pages/arena.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

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

/// The 12 bytes (and inline data) that stand in a row.
struct LongValueReference {
    std::uint32_t length = 0;
    std::uint32_t kind = 0;  // long_value::kInline, kSingle, kChain
    RecordPointer first;
    std::uint32_t stamp = 0;
    Bytes inlined;
};

/// Throws Corrupt (without a page) for bytes that are no reference.
[[nodiscard]] LongValueReference readReference(Bytes stored);

/// The value's bytes: in place where they stand in one piece, otherwise joined in `arena`. Text is
/// still in its stored form. Throws Corrupt, naming the page at fault; never takes more memory than
/// the file is long.
[[nodiscard]] Bytes readLongValue(PageFile& file, const LongValueReference& reference,
                                  Arena& arena);

/// One row of a chain: the pointer to the next, and its part of the data.
struct LongValueChunk {
    RecordPointer next;
    Bytes data;
};
[[nodiscard]] LongValueChunk readChunk(PageFile& file, RecordPointer at);

}  // namespace stelvan::jet
