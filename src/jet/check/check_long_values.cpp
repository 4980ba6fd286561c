#include "jet/check/check_long_values.h"

#include "jet/pages/data_page.h"

namespace stelvan::jet {

LongValueCheck::LongValueCheck(PageFile& file, const std::string& owner,
                               const ColumnStorage& storage, PageBook& pages, CheckLog& log)
    : file_(file), owner_(owner), log_(log) {
    if (storage.ownedMap.none()) return;
    for (const PageNumber page : pages.readMap(storage.ownedMap, owner)) {
        pages_.insert(page);
        pages.claim(page, owner);
        log_.attempt(page, [&] { checkPage(page); });
    }
    if (storage.freeMap.none()) return;
    for (const PageNumber page : pages.readMap(storage.freeMap, owner + " (with room)")) {
        if (!pages_.contains(page))
            log_.fault(page, "the page has room for " + owner + " but is none of its own.");
    }
}

void LongValueCheck::checkPage(PageNumber number) {
    const PageBytes bytes = file_.read(number);
    const DataPage page(number, bytes);
    checkDataPage(page, bytes, data_page::kLongValueOwner, log_);
    for (std::size_t i = 0; i < page.slotCount(); ++i) {
        const Slot slot = page.slot(i);
        if (slot.deleted()) continue;
        if (slot.flags != 0) log_.fault(number, "a part of a long value has a row's flags.");
        unused_.insert(RecordPointer{number, static_cast<std::uint8_t>(i)}.packed());
    }
}

void LongValueCheck::take(RecordPointer part, PageNumber rowPage) {
    if (!pages_.contains(part.page)) {
        log_.fault(rowPage, "a row refers to page " + std::to_string(part.page) +
                                ", which does not hold " + owner_ + ".");
    } else if (unused_.erase(part.packed()) == 0) {
        log_.fault(part.page, "a part of " + owner_ + " is deleted, missing or used twice.");
    }
}

void LongValueCheck::use(Bytes stored, PageNumber rowPage) {
    log_.attempt(rowPage, [&] {
        const LongValueReference reference = readReference(stored);
        if (reference.kind == long_value::kInline) {
            if (stored.size() != long_value::kReferenceSize + reference.length) {
                log_.fault(rowPage, "a long value within a row has another length than it says.");
            }
        } else if (reference.kind == long_value::kSingle) {
            useSingle(reference, rowPage);
        } else {
            useChain(reference, rowPage);
        }
    });
}

void LongValueCheck::useSingle(const LongValueReference& reference, PageNumber rowPage) {
    take(reference.first, rowPage);
    const DataPage page(reference.first.page, file_.read(reference.first.page));
    if (page.slot(reference.first.slot).length != reference.length) {
        log_.fault(reference.first.page, "a long value has another length than its row says.");
    }
}

void LongValueCheck::useChain(const LongValueReference& reference, PageNumber rowPage) {
    const DataPage first(reference.first.page, file_.read(reference.first.page));
    if (first.stamp() != reference.stamp) {
        log_.fault(reference.first.page,
                   "a chained long value's stamp is not that of its first page.");
    }
    std::size_t length = 0;
    for (RecordPointer at = reference.first; !at.none();) {
        take(at, rowPage);
        const LongValueChunk chunk = readChunk(file_, at);
        length += chunk.data.size();
        if (length > reference.length || (chunk.data.empty() && !chunk.next.none())) break;
        at = chunk.next;
    }
    if (length != reference.length) {
        log_.fault(reference.first.page,
                   "a chained long value has another length than its row says.");
    }
}

void LongValueCheck::finish() {
    for (const std::uint32_t part : unused_) {
        log_.note(RecordPointer::unpack(part).page, "a part of " + owner_ + " belongs to no row.");
    }
}

}  // namespace stelvan::jet
