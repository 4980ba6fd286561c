#include "jet/tables/table_scan.h"

#include "jet/rows/row_layout.h"

namespace stelvan::jet {

namespace {

// The engine keeps to one step; more would only follow a damaged pointer in circles.
constexpr int kMaxSteps = 4;

LocatedRow followPointer(PageFile& file, const TableDef& table, Bytes pointerRow, PageNumber page) {
    for (int step = 0; step < kMaxSteps; ++step) {
        if (pointerRow.size() < row::kPointerSize)
            throwCorrupt(page, "a moved row's pointer is cut.");
        const RecordPointer target = pointerAt(pointerRow, 0);
        const DataPage data = readOwnedPage(file, target.page, table.page);
        const Slot slot = data.slot(target.slot);
        if (slot.deleted()) throwCorrupt(target.page, "a moved row was deleted.");
        if (!slot.pointer()) return {data.row(slot), target};
        pointerRow = data.row(slot);
        page = target.page;
    }
    throwCorrupt(page, "a moved row's pointers do not come to an end.");
}

}  // namespace

std::optional<LocatedRow> locateRow(PageFile& file, const TableDef& table, RowId id) {
    if (id.page == 0 || id.page >= file.pageCount()) return std::nullopt;
    const PageBytes bytes = file.read(id.page);
    if (bytes[0] != static_cast<std::uint8_t>(PageType::Data)) return std::nullopt;
    const DataPage page(id.page, bytes);
    if (page.owner() != table.page || id.slot >= page.slotCount()) return std::nullopt;
    const Slot slot = page.slot(id.slot);
    if (slot.hidden()) return std::nullopt;
    if (slot.pointer()) return followPointer(file, table, page.row(slot), id.page);
    return LocatedRow{page.row(slot), {id.page, id.slot}};
}

bool TableScan::next() {
    return next([](std::size_t) {});
}

bool TableScan::nextOnPage() {
    if (!page_) return false;
    while (slot_ < page_->slotCount()) {
        const std::size_t index = slot_++;
        const Slot slot = page_->slot(index);
        if (slot.hidden()) continue;
        if (slot.pointer()) {
            row_ = followPointer(*file_, *table_, page_->row(slot), page_->number());
        } else {
            row_ = {page_->row(slot), {page_->number(), static_cast<std::uint8_t>(index)}};
        }
        return true;
    }
    return false;
}

bool TableScan::nextPage() {
    const auto page = UsageMap(*file_, table_->ownedMap).next(from_);
    if (!page) {
        page_.reset();
        return false;
    }
    page_.emplace(readOwnedPage(*file_, *page, table_->page));
    slot_ = 0;
    from_ = *page + 1;
    ++pages_;
    return true;
}

}  // namespace stelvan::jet
