#include "jet/pages/page_allocation.h"

#include <algorithm>
#include <vector>

#include "jet/pages/fixed_pages.h"

namespace stelvan::jet {

namespace {

// The engine lengthens the global map a little at a time.
constexpr PageNumber kMapStep = 4;

// Bitmap pages of the global map itself: taken where no map needs to be asked.
class AppendedPages final : public BitmapPageSource {
public:
    explicit AppendedPages(PageFile& file) : file_(&file) {}
    PageNumber takeBitmapPage() override {
        taken.push_back(file_->append());
        return taken.back();
    }
    std::vector<PageNumber> taken;

private:
    PageFile* file_;
};

}  // namespace

PageNumber FreePages::take() {
    const auto page = map_.next(0);
    if (!page || *page >= file_->pageCount()) return extend();
    if (*page == 0 || *page == kGlobalMapPage)
        throwCorrupt(kGlobalMapPage, "it calls itself or the header free.");
    map_.remove(*page);
    std::ranges::fill(file_->edit(*page), std::uint8_t{0});
    return *page;
}

PageNumber FreePages::extend() {
    if (file_->pageCount() >= kMaxPages) {
        throw Error(ErrorKind::DiskFull,
                    "The database has reached 2 GB, the most that it can hold.");
    }
    const PageNumber page = file_->append();
    cover(page);
    map_.remove(page);
    return page;
}

void FreePages::cover(PageNumber page) {
    if (map_.covers(page)) return;
    const PageNumber end = map_.rangeEnd();
    if (map_.isReference() || page < end) return coverByReference(page);
    const PageNumber steps = (page - end) / (8 * kMapStep) + 1;
    if (!map_.lengthen(std::size_t{steps} * kMapStep, 0xFF)) return coverByReference(page);
    // The new bytes say "free": true beyond the end of the file only.
    for (PageNumber used = end; used < file_->pageCount(); ++used) map_.remove(used);
}

void FreePages::coverByReference(PageNumber page) {
    AppendedPages source(*file_);
    const PageNumber known = map_.rangeEnd();
    map_.makeReference(source);
    const PageNumber end = (page / usage_map::kPagesPerBitmap + 1) * usage_map::kPagesPerBitmap;
    for (PageNumber beyond = std::max(known, file_->pageCount()); beyond < end; ++beyond)
        map_.add(beyond, source);
    for (const PageNumber bitmap : source.taken) map_.remove(bitmap);
}

void FreePages::give(PageNumber page, std::optional<PageType> type) {
    if (type) file_->edit(page)[0] = static_cast<std::uint8_t>(*type);
    cover(page);
    map_.add(page, *this);
}

PageNumber OwnedPages::allocate() {
    const PageNumber page = free_.take();
    map_.add(page, free_);
    return page;
}

void OwnedPages::release(PageNumber page) {
    map_.remove(page);
    free_.give(page, freed_);
}

}  // namespace stelvan::jet
