#include "jet/pages/slot_store.h"

namespace stelvan::jet {

namespace {
// A row that needs more than this leaves a page that it does not fit on the list, for smaller ones.
constexpr std::size_t kOrdinaryRow = 1024;
// Pages of the list that one row may try before it takes a new page.
constexpr int kMaxTries = 8;
// Less room than this is not worth a place on the list.
constexpr std::size_t kWorthListing = 64;
// A page with fewer slots has room for more: deleted ones are looked for beyond that only.
constexpr std::size_t kManySlots = 64;

/// A deleted slot that a row of this length can take.
std::optional<std::uint8_t> reusableSlot(const DataPage& page, std::size_t length) {
    if (page.slotCount() < kManySlots) return std::nullopt;
    for (std::size_t i = 0; i < page.slotCount() && i < data_page::kMaxSlots; ++i) {
        const Slot slot = page.slot(i);
        if (slot.deleted() && slot.length + page.freeBytes() >= length)
            return static_cast<std::uint8_t>(i);
    }
    return std::nullopt;
}

}  // namespace

bool SlotStore::hasRoom(PageNumber page, Wanted row) {
    const DataPage data = readOwnedPage(*file_, page, owner_);
    return data.fits(row.length) || (row.reuse && reusableSlot(data, row.length));
}

PageNumber SlotStore::pageFor(Wanted row) {
    if (last_ != 0 && hasRoom(last_, row)) return last_;
    if (const auto listed = listedPageFor(row)) return *listed;
    return newPage();
}

std::optional<PageNumber> SlotStore::listedPageFor(Wanted row) {
    UsageMapEditor list(*file_, freeMap_.none() ? ownedMap_ : freeMap_);
    auto page = list.next(0);
    for (int tries = 0; page && tries < kMaxTries; ++tries) {
        if (hasRoom(*page, row)) return page;
        if (!freeMap_.none() && row.length <= kOrdinaryRow) list.remove(*page);
        page = list.next(*page + 1);
    }
    return std::nullopt;
}

PageNumber SlotStore::newPage() {
    const PageNumber page = OwnedPages(*file_, ownedMap_, PageType::FreedData).allocate();
    DataPageEditor::format(file_->edit(page), owner_);
    listAsFree(page);
    return page;
}

void SlotStore::listAsFree(PageNumber page) {
    if (freeMap_.none()) return;
    UsageMapEditor list(*file_, freeMap_);
    FreePages source(*file_);
    if (!list.contains(page)) list.add(page, source);
}

RecordPointer SlotStore::add(Bytes row, std::uint16_t flags) {
    const bool reuse = owner_ == data_page::kLongValueOwner || flags == data_page::kHidden;
    last_ = pageFor({row.size(), reuse});
    DataPageEditor editor = edit(last_);
    const auto slot = reuse ? reusableSlot(editor.page(), row.size()) : std::nullopt;
    if (!slot) return {last_, editor.append(row, flags)};
    editor.replace(*slot, row, flags);
    return {last_, *slot};
}

bool SlotStore::replace(RecordPointer at, Bytes row, std::uint16_t flags) {
    const DataPage page = readOwnedPage(*file_, at.page, owner_);
    const Slot slot = page.slot(at.slot);
    if (row.size() > slot.length + page.freeBytes()) return false;
    const bool shrinks = row.size() + kWorthListing <= slot.length;
    edit(at.page).replace(at.slot, row, flags);
    if (shrinks) listAsFree(at.page);
    return true;
}

void SlotStore::remove(RecordPointer at) {
    static_cast<void>(readOwnedPage(*file_, at.page, owner_));
    DataPageEditor editor = edit(at.page);
    editor.erase(at.slot);
    if (!editor.page().empty()) {
        if (editor.page().freeBytes() >= kWorthListing) listAsFree(at.page);
        return;
    }
    if (last_ == at.page) last_ = 0;
    if (!freeMap_.none()) UsageMapEditor(*file_, freeMap_).remove(at.page);
    OwnedPages(*file_, ownedMap_, PageType::FreedData).release(at.page);
}

}  // namespace stelvan::jet
