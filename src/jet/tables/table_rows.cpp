#include "jet/tables/table_rows.h"

#include <array>

#include "jet/pages/data_page.h"
#include "jet/rows/row_layout.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

using namespace data_page;

RowId TableRows::add(Bytes row) {
    const RecordPointer at = store_.add(row);
    return {at.page, at.slot};
}

// The rows behind a pointer, first to last; none for a row that stands in its own slot.
std::vector<RecordPointer> TableRows::targetsOf(RowId id) const {
    constexpr std::size_t kMaxSteps = 4;
    std::vector<RecordPointer> targets;
    RecordPointer at{id.page, id.slot};
    while (true) {
        const DataPage page = readOwnedPage(*file_, at.page, table_->page);
        const Slot slot = page.slot(at.slot);
        if (slot.deleted()) throwCorrupt(at.page, "a row that is still in use was deleted.");
        if (!slot.pointer()) return targets;
        if (targets.size() == kMaxSteps)
            throwCorrupt(at.page, "a moved row's pointers do not come to an end.");
        at = pointerAt(page.row(slot), 0);
        targets.push_back(at);
    }
}

void TableRows::removeAll(const std::vector<RecordPointer>& rows) {
    for (const RecordPointer& at : rows) store_.remove(at);
}

void TableRows::replace(RowId id, Bytes row) {
    const RecordPointer first{id.page, id.slot};
    const std::vector<RecordPointer> targets = targetsOf(id);
    if (store_.replace(first, row, 0)) return removeAll(targets);
    if (targets.size() == 1 && store_.replace(targets[0], row, kHidden)) return;
    std::array<std::uint8_t, ::stelvan::jet::row::kPointerSize> pointer{};
    putPointer(pointer, 0, store_.add(row, kHidden));
    if (!store_.replace(first, pointer, kPointer)) {
        throw Error(ErrorKind::RowTooLarge, "A row is too short to point to a longer one.",
                    id.page);
    }
    removeAll(targets);
}

void TableRows::remove(RowId id) {
    const std::vector<RecordPointer> targets = targetsOf(id);
    store_.remove({id.page, id.slot});
    removeAll(targets);
}

}  // namespace stelvan::jet
