// The books of pages: the global map of free pages, and the maps of their owners.
//
// Every used page stands in exactly one owner's map (or is a map, a definition, or the header); a
// freed one is in no owner's map before the global map calls it free. Everything here needs a unit
// of work.
#pragma once

#include <optional>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/page_allocator.h"
#include "jet/pages/record_pointer.h"
#include "jet/pages/usage_map.h"

namespace stelvan::jet {

/// The pages of the file that nobody owns.
class FreePages final : public BitmapPageSource {
public:
    explicit FreePages(PageFile& file)
        : file_(&file), map_(file, {kGlobalMapPage, kGlobalMapRow}) {}

    /// A zeroed page, free until now or new at the end of the file. Throws DiskFull.
    [[nodiscard]] PageNumber take();
    /// Takes the page back. Its first byte becomes `type`; what else stands on it stays.
    void give(PageNumber page, std::optional<PageType> type);

    [[nodiscard]] PageNumber takeBitmapPage() override { return take(); }

private:
    [[nodiscard]] PageNumber extend();
    /// Makes sure that the map has a place for a page below the end of the file.
    void cover(PageNumber page);
    void coverByReference(PageNumber page);

    PageFile* file_;
    UsageMapEditor map_;
};

/// The pages of one index, table or long-value column.
class OwnedPages final : public PageAllocator {
public:
    /// `freed` is the type byte that a page gets when it is given back, where the engine changes
    /// it.
    OwnedPages(PageFile& file, RecordPointer map, std::optional<PageType> freed = std::nullopt)
        : free_(file), map_(file, map), freed_(freed) {}

    [[nodiscard]] PageNumber allocate() override;
    void release(PageNumber page) override;

private:
    FreePages free_;
    UsageMapEditor map_;
    std::optional<PageType> freed_;
};

}  // namespace stelvan::jet
