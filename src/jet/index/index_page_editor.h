// Changing one page of an index in place: entries in and out, links, or all entries anew.
//
// Whatever is done, mask, prefix and free space agree with the entries afterwards. Adding an entry
// only moves the bytes behind it; a page is written anew only when its prefix must change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "jet/disk/page.h"
#include "jet/index/index_page.h"

namespace stelvan::jet {

/// Whole entries in order, in one piece of memory.
class EntryList {
public:
    explicit EntryList(const IndexPage& page);

    [[nodiscard]] std::size_t size() const { return starts_.size() - 1; }
    [[nodiscard]] Bytes operator[](std::size_t index) const {
        return Bytes(bytes_).subspan(starts_[index], starts_[index + 1] - starts_[index]);
    }
    /// The index of the entry that starts at a position of the page the list was made from.
    [[nodiscard]] std::size_t indexOf(std::size_t position) const;
    void insert(std::size_t index, Bytes entry);
    /// All entries of another page behind those that are there.
    void append(const IndexPage& page);

    /// The longest prefix that the entries [first, last) may have in a page. `behind` is the size
    /// of what follows the key in each.
    [[nodiscard]] std::size_t sharedKey(std::size_t first, std::size_t last,
                                        std::size_t behind) const;
    /// Bytes that the entries [first, last) take with this prefix.
    [[nodiscard]] std::size_t sizeWith(std::size_t prefix, std::size_t first,
                                       std::size_t last) const;

private:
    EntryBytes bytes_;
    std::vector<std::size_t> starts_ = {0};    // in bytes_, and the end
    std::vector<std::size_t> positions_ = {};  // in the page, and its end
};

class IndexPageEditor {
public:
    IndexPageEditor(WritablePageBytes bytes, PageNumber number, PageNumber definition)
        : bytes_(bytes), number_(number), definition_(definition) {}

    /// Makes an empty leaf (level 0) or node of these bytes, whatever they held.
    static void format(WritablePageBytes bytes, PageNumber definition, std::uint8_t level);

    [[nodiscard]] IndexPage page() const { return {bytes_, number_, definition_}; }

    /// Adds an entry in front of the one at `start`; false (nothing changed) where the page has no
    /// room or the entry does not have the page's prefix.
    [[nodiscard]] bool insert(std::size_t start, Bytes entry);
    void erase(std::size_t start);
    /// Replaces all entries, with a prefix only if they need one to fit; false (nothing changed) if
    /// they do not fit at all.
    [[nodiscard]] bool rebuild(const EntryList& entries, std::size_t first, std::size_t last);

    void setPrevious(PageNumber page) { putU32(bytes_, index_page::kPrevious, page); }
    void setNext(PageNumber page) { putU32(bytes_, index_page::kNext, page); }
    void setTail(PageNumber page) { putU32(bytes_, index_page::kTailChild, page); }

private:
    [[nodiscard]] WritableBytes entryArea() const { return bytes_.subspan(index_page::kEntries); }
    void setEnd(std::size_t end);
    void setPrefix(std::size_t prefix) {
        putU16(bytes_, index_page::kPrefix, static_cast<std::uint16_t>(prefix));
    }
    [[nodiscard]] std::size_t bytesBehindKey() const;

    WritablePageBytes bytes_;
    PageNumber number_;
    PageNumber definition_;
};

}  // namespace stelvan::jet
