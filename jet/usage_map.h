// A set of pages, kept as a row of a usage-map page: a bitmap in the row itself, or a list of bitmap pages.
//
// Reading never trusts the form: lengths come from the row, bitmap pages are checked. The members of a map
// are hints to their pages only in so far as the pages agree.
#pragma once

#include <optional>

#include "jet/bytes.h"
#include "jet/page_file.h"

namespace stelvan::jet {

class UsageMap {
public:
    UsageMap(PageFile& file, RecordPointer where) : file_(&file), where_(where) {}

    [[nodiscard]] bool contains(PageNumber page) const;
    /// The smallest member that is not below `from`.
    [[nodiscard]] std::optional<PageNumber> next(PageNumber from) const;
    /// One past the largest page that the map can hold as it stands.
    [[nodiscard]] PageNumber rangeEnd() const;

private:
    [[nodiscard]] Bytes row() const;
    [[nodiscard]] std::optional<PageNumber> nextReferenced(Bytes map, PageNumber from) const;

    PageFile* file_;
    RecordPointer where_;
};

/// The bitmap of a bitmap page. Throws Corrupt for a page of another type.
[[nodiscard]] Bytes readBitmapPage(PageFile& file, PageNumber page);

}  // namespace stelvan::jet
