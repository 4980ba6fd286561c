// Where usage maps live: rows of pages that no table owns. A map never moves to another row,
// because its place stands in definitions; the row of a map that is no longer needed is deleted.
#pragma once

#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

class MapRows {
public:
    /// `pages`: usage-map pages that are known to exist, tried in this order.
    MapRows(PageFile& file, std::vector<PageNumber> pages)
        : file_(&file), pages_(std::move(pages)) {}

    /// Adds an empty map. Needs a unit of work.
    [[nodiscard]] RecordPointer add();

    /// Deletes a map and the bitmap pages that it refers to; the page too when nothing else is left
    /// on it.
    static void remove(PageFile& file, RecordPointer map);

private:
    PageFile* file_;
    std::vector<PageNumber> pages_;
};

}  // namespace stelvan::jet
