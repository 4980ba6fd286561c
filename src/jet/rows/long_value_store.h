// Writing and freeing the long values of one column.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "jet/disk/page_file.h"
#include "jet/pages/data_page.h"
#include "jet/pages/long_value.h"
#include "jet/pages/record_pointer.h"
#include "jet/pages/slot_store.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"

namespace stelvan::jet {

/// A long value on its way: the bytes as they are stored, and where they may go.
struct LongValueData {
    Blob bytes;
    bool inlined = false;  // may stand in the row itself
};

/// What stands in the row for a long value, in front of data that is inlined.
using StoredReference = std::array<std::uint8_t, long_value::kReferenceSize>;

/// The stored bytes of a Memo or Ole value. Short ones may stand in the row; memos are compressed
/// as the engine compresses them. Reuses the memory of `data`.
void encodeLongValue(const ColumnInfo& column, const ValueView& value, LongValueData& data);

/// For a value of `size` bytes that stands in the row.
[[nodiscard]] StoredReference inlineReference(std::size_t size);

class LongValueStore {
public:
    LongValueStore(PageFile& file, const ColumnStorage& storage)
        : file_(&file),
          rows_(file, data_page::kLongValueOwner, storage.ownedMap, storage.freeMap) {}

    /// Stores a value on the column's own pages and gives its reference. Needs a unit of work.
    [[nodiscard]] StoredReference write(const Blob& bytes);

    /// The rows that hold a value, first to last; none for one that stands in its row. Throws
    /// Corrupt.
    [[nodiscard]] std::vector<RecordPointer> rowsOf(Bytes reference) const;
    void remove(const std::vector<RecordPointer>& rows);

private:
    [[nodiscard]] RecordPointer writeChain(const Blob& bytes);

    PageFile* file_;
    SlotStore rows_;
};

}  // namespace stelvan::jet
