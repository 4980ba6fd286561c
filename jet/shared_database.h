// What all handles of this process on one file share: its pages, its catalogue, the open unit of work.
#pragma once

#include <cstddef>
#include <memory>

#include "jet/catalog.h"
#include "jet/page_file.h"

namespace stelvan::jet {

class SharedDatabase {
public:
    explicit SharedDatabase(std::shared_ptr<PageFile> pages) : pages_(std::move(pages)), catalog_(*pages_) {}
    SharedDatabase(const SharedDatabase&) = delete;
    SharedDatabase& operator=(const SharedDatabase&) = delete;

    /// The one object for a page file.
    static std::shared_ptr<SharedDatabase> of(const std::shared_ptr<PageFile>& pages);

    [[nodiscard]] PageFile& pages() { return *pages_; }
    [[nodiscard]] const std::shared_ptr<PageFile>& sharedPages() { return pages_; }

    /// The catalogue as the file holds it now. Needs a scope.
    [[nodiscard]] Catalog& catalog() {
        catalog_.follow();
        return catalog_;
    }

    /// Cursors that hold spans of pages: memory is released only by the one that is alone.
    std::size_t cursors = 0;

private:
    std::shared_ptr<PageFile> pages_;
    Catalog catalog_;
};

}  // namespace stelvan::jet
