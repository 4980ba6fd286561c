#include "jet/rows/long_value_store.h"

#include <algorithm>

#include "base/utf.h"
#include "jet/pages/data_page.h"
#include "jet/rows/text.h"

namespace stelvan::jet {

using namespace long_value;

namespace {

StoredReference makeReference(std::uint32_t kind, std::size_t length, RecordPointer first,
                              std::uint32_t stamp) {
    StoredReference reference{};
    putU32(reference, kLengthAndKind, kind | static_cast<std::uint32_t>(length));
    putPointer(reference, kPointer, first);
    putU32(reference, kStamp, stamp);
    return reference;
}

}  // namespace

void encodeLongValue(const ColumnInfo& column, const ValueView& value, LongValueData& data) {
    data.bytes.clear();
    if (column.type == ColumnType::Ole) {
        const Bytes bytes = std::get<Bytes>(value);
        data.bytes.assign(bytes.begin(), bytes.end());
        data.inlined = bytes.size() <= kMaxInline;
        return;
    }
    const auto text = std::get<std::string_view>(value);
    // Short memos are compressed whatever the column says; long ones never.
    const auto compressed = [&](std::size_t units) {
        data.inlined = 2 * units <= kMaxInline;
        return data.inlined || (column.compressed && units <= kMaxCompressedCharacters);
    };
    if (encodeAscii(text, compressed(text.size()), data.bytes)) return;
    const std::u16string units = base::toUtf16(text);
    encodeText(units, compressed(units.size()), data.bytes);
}

StoredReference inlineReference(std::size_t size) {
    return makeReference(kInline, size, {}, 0);
}

StoredReference LongValueStore::write(const Blob& bytes) {
    if (bytes.size() > kLengthMask)
        throw Error(ErrorKind::TextTooLong, "A long value is longer than 1 GB.");
    if (bytes.size() <= kMaxRow) return makeReference(kSingle, bytes.size(), rows_.add(bytes), 0);
    const RecordPointer first = writeChain(bytes);
    return makeReference(kChain, bytes.size(), first,
                         DataPage(first.page, file_->read(first.page)).stamp());
}

// Last part first, so that each part knows where the next one is.
RecordPointer LongValueStore::writeChain(const Blob& bytes) {
    RecordPointer next;
    std::size_t end = bytes.size();
    Blob row;
    while (end > 0) {
        const std::size_t begin = (end - 1) / kChunk * kChunk;
        row.assign(kNext, 0);
        putPointer(row, 0, next);
        row.insert(row.end(), bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                   bytes.begin() + static_cast<std::ptrdiff_t>(end));
        next = rows_.add(row);
        end = begin;
    }
    return next;
}

std::vector<RecordPointer> LongValueStore::rowsOf(Bytes stored) const {
    const LongValueReference reference = readReference(stored);
    if (reference.kind == kInline || reference.length == 0) return {};
    std::vector<RecordPointer> rows;
    if (reference.kind == kSingle) {
        Arena arena;
        static_cast<void>(readLongValue(*file_, reference, arena));
        rows.push_back(reference.first);
        return rows;
    }
    std::size_t found = 0;
    for (RecordPointer at = reference.first; found < reference.length && !at.none();) {
        const LongValueChunk chunk = readChunk(*file_, at);
        if (chunk.data.empty()) throwCorrupt(at.page, "a part of a long value is empty.");
        rows.push_back(at);
        found += chunk.data.size();
        at = chunk.next;
    }
    if (found != reference.length)
        throwCorrupt(reference.first.page, "a long value has the wrong length.");
    return rows;
}

void LongValueStore::remove(const std::vector<RecordPointer>& rows) {
    for (const RecordPointer& at : rows) rows_.remove(at);
}

}  // namespace stelvan::jet
