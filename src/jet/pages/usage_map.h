// A set of pages, kept as a row of a usage-map page: a bitmap in the row itself, or a list of
// bitmap pages.
//
// Reading never trusts the form: lengths come from the row, bitmap pages are checked. The members
// of a map are hints to their pages only in so far as the pages agree.
#pragma once

#include <optional>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/format.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

class UsageMap {
public:
    UsageMap(PageFile& file, RecordPointer where) : file_(&file), where_(where) {}

    [[nodiscard]] bool contains(PageNumber page) const;
    /// The smallest member that is not below `from`.
    [[nodiscard]] std::optional<PageNumber> next(PageNumber from) const;
    /// Whether the members stand on bitmap pages.
    [[nodiscard]] bool isReference() const;
    /// One past the largest page that the map has a place for as it stands.
    [[nodiscard]] PageNumber rangeEnd() const;
    /// The bitmap pages that it refers to.
    [[nodiscard]] std::vector<PageNumber> bitmapPages() const;

protected:
    [[nodiscard]] Bytes row() const;
    [[nodiscard]] PageFile& file() const { return *file_; }
    [[nodiscard]] RecordPointer where() const { return where_; }

private:
    [[nodiscard]] std::optional<PageNumber> nextReferenced(Bytes map, PageNumber from) const;

    PageFile* file_;
    RecordPointer where_;
};

/// Where a map that grows gets its bitmap pages: zeroed, used, and owned by nobody else.
class BitmapPageSource {
public:
    virtual ~BitmapPageSource() = default;
    virtual PageNumber takeBitmapPage() = 0;
};

/// Changes a map. A bitmap in the row moves to where its pages are, or gives way to bitmap pages,
/// when a page does not lie within its range. Needs a unit of work.
class UsageMapEditor : public UsageMap {
public:
    using UsageMap::UsageMap;

    void add(PageNumber page, BitmapPageSource& source);
    /// Does nothing where the page is no member.
    void remove(PageNumber page);
    /// Turns a bitmap in the row into bitmap pages with the same members.
    void makeReference(BitmapPageSource& source);
    /// Makes the row longer by `bytes`, each of them `fill`; false where its page has no room.
    bool lengthen(std::size_t bytes, std::uint8_t fill);
    /// Whether the map has a place for the page as it stands.
    [[nodiscard]] bool covers(PageNumber page) const;

    /// The bytes of an empty map.
    [[nodiscard]] static Blob emptyMap() { return Blob(usage_map::kNewRowSize); }

private:
    [[nodiscard]] WritableBytes editRow();
    void addReferenced(PageNumber page, BitmapPageSource& source);
    bool moveWindow(PageNumber page);
};

/// The bitmap of a bitmap page. Throws Corrupt for a page of another type.
[[nodiscard]] Bytes readBitmapPage(PageFile& file, PageNumber page);

}  // namespace stelvan::jet
