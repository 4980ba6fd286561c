// A set of pages, kept as a row of a usage-map page: a bitmap in the row itself, or a list of
// bitmap pages.
//
// Reading never trusts the form: lengths come from the row, bitmap pages are checked. The members
// of a map are hints to their pages only in so far as the pages agree.
//
//   OFFSET  SIZE  MEANING, in a row of bits            in a row of references
//        0     1  00                                   01
//        1     4  first page S, a multiple of 8        page of the bits of pages 0 to 32735, or 0
//        5     n  bit k of byte j: page S + 8*j + k    4 bytes each for the next 32736 pages
// A page of bits begins 05 01 00 00; its other 4092 bytes are bits, the lowest first.
//
// Invariants of the maps that are written here (checkInvariants() looks at the first two):
//   1. A row of bits begins at a multiple of 8.
//   2. A page of bits lies within the file, shows its type, and is referred to once.
//   3. A page is a member of one owner's map at most; a free one of the map of free pages alone.
//      Who takes and gives back pages keeps this (page_allocation.h), check/ judges it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

namespace usage_map {
inline constexpr std::uint8_t kInline = 0;
inline constexpr std::uint8_t kReference = 1;
inline constexpr std::size_t kForm = 0;
inline constexpr std::size_t kStart = 1;       // inline: first page of the bitmap
inline constexpr std::size_t kBits = 5;        // inline: the bitmap
inline constexpr std::size_t kReferences = 1;  // reference: page numbers of bitmap pages
inline constexpr std::size_t kNewRowSize = 69;
inline constexpr std::size_t kBitmapHeader = 4;  // on a bitmap page
inline constexpr PageNumber kPagesPerBitmap = (kPageSize - kBitmapHeader) * 8;
}  // namespace usage_map

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
    /// What is broken, empty where nothing is: for tests.
    [[nodiscard]] std::string checkInvariants() const;

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
