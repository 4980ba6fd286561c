// Long values (Memo, Ole): 12 bytes in the row, and the data behind them, in one row of a
// long-value page, or in a chain of such rows.
#pragma once

#include "jet/disk/bytes.h"
#include "jet/disk/page_file.h"
#include "jet/pages/arena.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

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
