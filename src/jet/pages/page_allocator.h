// Where the pages of one owner (an index, a table, a long-value column) come from and go back to.
//
// Who implements it keeps the books: an allocated page is out of the global map's free pages and in
// the owner's map; a released one the other way round. Both need a write scope on the page file.
#pragma once

#include "jet/disk/page.h"

namespace stelvan::jet {

class PageAllocator {
public:
    virtual ~PageAllocator() = default;

    /// A zeroed page that now belongs to the owner. Throws DiskFull at the size limit of a file.
    [[nodiscard]] virtual PageNumber allocate() = 0;

    /// Gives a page of the owner back; nothing may point to it any more.
    virtual void release(PageNumber page) = 0;

protected:
    PageAllocator() = default;
    PageAllocator(const PageAllocator&) = default;
    PageAllocator& operator=(const PageAllocator&) = default;
};

}  // namespace stelvan::jet
