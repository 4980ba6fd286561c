#include "jet/pages/map_rows.h"

#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/page_allocation.h"
#include "jet/pages/usage_map.h"

namespace stelvan::jet {

RecordPointer MapRows::add() {
    const Blob empty = UsageMapEditor::emptyMap();
    for (const PageNumber number : pages_) {
        const DataPage page(number, file_->read(number));
        if (page.owner() != 0 || !page.fits(empty.size())) continue;
        return {number, DataPageEditor(number, file_->edit(number)).append(empty)};
    }
    const PageNumber number = FreePages(*file_).take();
    DataPageEditor::format(file_->edit(number), 0);
    pages_.push_back(number);
    return {number, DataPageEditor(number, file_->edit(number)).append(empty)};
}

void MapRows::remove(PageFile& file, RecordPointer map) {
    FreePages free(file);
    for (const PageNumber bitmap : UsageMap(file, map).bitmapPages())
        free.give(bitmap, std::nullopt);
    DataPageEditor editor(map.page, file.edit(map.page));
    editor.erase(map.slot);
    if (map.page != kFirstUsageMapPage && editor.page().empty())
        free.give(map.page, PageType::FreedData);
}

}  // namespace stelvan::jet
