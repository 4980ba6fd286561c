// What all handles of this process on one file share: its pages, its catalogue, and what writes to
// its tables. The parts know one another downwards only: writer, catalogue, pages.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/tables/catalog.h"
#include "jet/tables/database_writer.h"
#include "jet/tables/unit_of_work.h"

namespace stelvan::jet {

class SharedDatabase {
public:
    explicit SharedDatabase(std::shared_ptr<PageFile> pages)
        : pages_(std::move(pages)), catalog_(*pages_), writer_(*pages_, catalog_) {}
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

    /// Changes rows. Needs a unit of work.
    [[nodiscard]] DatabaseWriter& writer() { return writer_; }

    /// Cursors that hold spans of pages: memory is released only by the one that is alone.
    std::size_t cursors = 0;

private:
    std::shared_ptr<PageFile> pages_;
    Catalog catalog_;
    DatabaseWriter writer_;
};

/// Throws ReadOnly for a handle that was opened for reading.
void requireWritable(Access access, SharedDatabase& file);

/// Runs a change in the open unit of work, or in one of its own. No scope is opened within a unit:
/// what `apply` refuses before it changes something must leave the unit as it is.
template <typename Apply>
auto runInUnit(const std::shared_ptr<SharedDatabase>& file, Apply&& apply) {
    std::optional<UnitOfWork> own;
    if (!file->pages().inUnit()) own.emplace(file);
    if constexpr (std::is_void_v<decltype(apply())>) {
        apply();
        if (own) own->commit();
    } else {
        const auto result = apply();
        if (own) own->commit();
        return result;
    }
}

}  // namespace stelvan::jet
