// Rows on the pages of one owner: a table, or a long-value column. Finds room, keeps the owner's
// maps, gives empty pages back.
//
// The map of pages with room is a hint; a page's own free bytes decide. Needs a unit of work. One
// object serves an owner for as long as no other process changes the file: it remembers where the
// last row went.
#pragma once

#include <optional>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/data_page.h"
#include "jet/pages/page_allocation.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

class SlotStore {
public:
    /// `owner` is what the pages' owner field says. `freeMap` may be none.
    SlotStore(PageFile& file, std::uint32_t owner, RecordPointer ownedMap, RecordPointer freeMap)
        : file_(&file), owner_(owner), ownedMap_(ownedMap), freeMap_(freeMap) {}

    /// Adds a row where there is room. One that is only reached through a pointer (a long value, a
    /// moved row) may take the slot of a deleted one; a row's id is not given again while its page
    /// is in use.
    [[nodiscard]] RecordPointer add(Bytes row, std::uint16_t flags = 0);
    /// Gives a row other content if its page has room for it.
    [[nodiscard]] bool replace(RecordPointer at, Bytes row, std::uint16_t flags);
    /// Deletes a row; its page goes back when it was the last one there.
    void remove(RecordPointer at);

private:
    [[nodiscard]] DataPageEditor edit(PageNumber page) { return {page, file_->edit(page)}; }
    /// A row on its way: how long it is, and whether it may take a deleted slot.
    struct Wanted {
        std::size_t length = 0;
        bool reuse = false;
    };

    [[nodiscard]] PageNumber pageFor(Wanted row);
    [[nodiscard]] std::optional<PageNumber> listedPageFor(Wanted row);
    [[nodiscard]] PageNumber newPage();
    [[nodiscard]] bool hasRoom(PageNumber page, Wanted row);
    void listAsFree(PageNumber page);

    PageFile* file_;
    std::uint32_t owner_;
    RecordPointer ownedMap_;
    RecordPointer freeMap_;
    PageNumber last_ = 0;  // where the last row went
};

}  // namespace stelvan::jet
