#include "jet/pages/long_value.h"

#include <algorithm>

#include "jet/disk/page.h"
#include "jet/pages/data_page.h"

namespace stelvan::jet {

using namespace long_value;

namespace {

Bytes longValueRow(PageFile& file, RecordPointer at) {
    const DataPage page(at.page, file.read(at.page));
    if (page.owner() != data_page::kLongValueOwner)
        throwCorrupt(at.page, "it holds no long values.");
    const Slot slot = page.slot(at.slot);
    if (slot.flags != 0) throwCorrupt(at.page, "a long value that is still in use was deleted.");
    return page.row(slot);
}

// Every chunk brings at least one byte, so that a chain that returns to itself ends at the length.
Bytes joinChain(PageFile& file, const LongValueReference& reference, Arena& arena) {
    char* const begin = arena.take(reference.length);
    std::size_t filled = 0;
    RecordPointer at = reference.first;
    while (filled < reference.length) {
        if (at.none()) throwCorrupt(reference.first.page, "a long value ends too early.");
        const LongValueChunk chunk = readChunk(file, at);
        if (chunk.data.empty() || chunk.data.size() > reference.length - filled) {
            throwCorrupt(at.page, "a part of a long value has the wrong length.");
        }
        std::ranges::copy(chunk.data, begin + filled);
        filled += chunk.data.size();
        at = chunk.next;
    }
    return {reinterpret_cast<const std::uint8_t*>(begin), reference.length};
}

}  // namespace

LongValueReference readReference(Bytes stored) {
    LongValueReference reference;
    const std::uint32_t word = u32At(stored, kLengthAndKind);
    reference.length = word & kLengthMask;
    reference.kind = word & kKindMask;
    reference.first = pointerAt(stored, kPointer);
    reference.stamp = u32At(stored, kStamp);
    if (reference.kind == kInline) {
        reference.inlined = bytesAt(stored, kReferenceSize, reference.length);
    } else if (reference.kind == kKindMask) {
        throw Error(ErrorKind::Corrupt, "A long value is of an unknown kind.");
    }
    return reference;
}

LongValueChunk readChunk(PageFile& file, RecordPointer at) {
    const Bytes row = longValueRow(file, at);
    if (row.size() < kNext) throwCorrupt(at.page, "a part of a long value is too short.");
    return {pointerAt(row, 0), row.subspan(kNext)};
}

Bytes readLongValue(PageFile& file, const LongValueReference& reference, Arena& arena) {
    if (reference.kind == kInline) return reference.inlined;
    if (reference.length == 0) return {};
    if (reference.length / kPageSize >= file.pageCount()) {
        throwCorrupt(reference.first.page, "a long value claims to be longer than the file.");
    }
    if (reference.kind == kChain) return joinChain(file, reference, arena);
    const Bytes row = longValueRow(file, reference.first);
    if (row.size() < reference.length)
        throwCorrupt(reference.first.page, "a long value is too short.");
    return row.first(reference.length);
}

}  // namespace stelvan::jet
