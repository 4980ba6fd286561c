// One page of an index: a leaf with the entries of rows, or a node with entries that lead to pages
// below.
//
// Entries stand one after the other without lengths; a bit mask says where each one ends. Places
// within a page are byte positions counted from the first entry: an entry is named by where it
// starts, and the end of the last one stands for "behind all" (in a node: for the tail child). All
// but the first entry are stored without the bytes that all entries of the page share at their
// beginning, the prefix. Nothing read here is believed: what cannot be an index page of the table
// throws Corrupt with the page.
//
//   OFFSET  SIZE  MEANING
//        0     2  03 01 a node, 04 01 a leaf
//        2     2  free bytes behind the last entry
//        4     4  definition page of the table
//       12     4  previous page of the level, 0 for none
//       16     4  next page of the level, 0 for none
//       20     4  tail child of a node: what is greater than all entries
//       24     2  length of the prefix
//       26     1  level, 0 for leaves
//       27   453  a bit for each byte of entries, the lowest first: an entry ends before it
//      480  3616  entries: key, page and slot of the row (big-endian), in nodes the child page
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

namespace index_page {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kDefinition = 4;
inline constexpr std::size_t kPrevious = 12;
inline constexpr std::size_t kNext = 16;
inline constexpr std::size_t kTailChild = 20;
inline constexpr std::size_t kPrefix = 24;
inline constexpr std::size_t kLevel = 26;
inline constexpr std::size_t kMask = 27;
inline constexpr std::size_t kMaskSize = 453;
inline constexpr std::size_t kEntries = 480;
inline constexpr std::size_t kEntriesSize = kPageSize - kEntries;
inline constexpr std::size_t kRowPointer = 4;  // big-endian page and slot after the key
inline constexpr std::size_t kChild = 4;       // big-endian child page after that, in nodes
}  // namespace index_page

using EntryBytes = std::vector<std::uint8_t>;

/// The way to a place in an index: pages from the root down to a leaf, and in each the entry that
/// stands there, in nodes the one whose child was taken. Good until the index is changed; kept for
/// many changes, it saves their memory.
struct IndexPlace {
    struct Step {
        PageNumber page = 0;
        std::size_t position = 0;
    };
    std::vector<Step> steps;
    EntryBytes entry;  // the one that is added there
};

/// A whole entry: key bytes, then the row pointer in the order in which it sorts.
void makeEntry(Bytes key, RowId row, EntryBytes& entry);
[[nodiscard]] RowId rowOfEntry(Bytes entry);

/// Bytes that two entries share at their beginning.
[[nodiscard]] std::size_t sharedSize(Bytes a, Bytes b);

[[nodiscard]] int compareBytes(Bytes a, Bytes b);

/// Reads a page; the bytes must outlive it.
class IndexPage {
public:
    IndexPage(PageBytes bytes, PageNumber number, PageNumber definition);

    [[nodiscard]] bool isLeaf() const { return leaf_; }
    [[nodiscard]] PageNumber number() const { return number_; }
    [[nodiscard]] PageNumber previous() const { return u32At(bytes_, index_page::kPrevious); }
    [[nodiscard]] PageNumber next() const { return u32At(bytes_, index_page::kNext); }
    [[nodiscard]] PageNumber tail() const { return u32At(bytes_, index_page::kTailChild); }
    [[nodiscard]] std::uint8_t level() const { return u8At(bytes_, index_page::kLevel); }
    [[nodiscard]] std::size_t prefixSize() const { return prefix_; }

    /// Where the last entry ends.
    [[nodiscard]] std::size_t end() const { return end_; }
    [[nodiscard]] bool empty() const { return end_ == 0; }
    [[nodiscard]] std::size_t endOf(std::size_t start) const;
    /// Where the entry starts that holds the byte at `within`.
    [[nodiscard]] std::size_t startOf(std::size_t within) const;
    [[nodiscard]] std::size_t lastStart() const { return startOf(end_ - 1); }

    /// How many entries the mask tells of.
    [[nodiscard]] std::size_t entryCount() const;

    /// The bytes of an entry as they stand in the page, without the prefix unless it is the first.
    [[nodiscard]] Bytes stored(std::size_t start) const;

    /// The whole entry: key and row pointer, in a node the child too.
    void copyEntry(std::size_t start, EntryBytes& entry) const {
        entry.clear();
        appendEntry(start, entry);
    }
    /// The same behind what `entries` holds already.
    void appendEntry(std::size_t start, EntryBytes& entries) const;

    /// The page below an entry of a node, at end() the tail child.
    [[nodiscard]] PageNumber child(std::size_t start) const;

    /// The first entry whose key and row pointer are not below `wanted` (a key with or without row
    /// pointer).
    [[nodiscard]] std::size_t lowerBound(Bytes wanted) const;

    /// Whether an entry of a leaf stands under exactly this key.
    [[nodiscard]] bool hasKey(std::size_t start, Bytes key) const;

    /// How `wanted` compares with the key and row pointer of an entry: below zero, zero, above
    /// zero.
    [[nodiscard]] int compareWith(Bytes wanted, std::size_t start) const;

private:
    [[noreturn]] void damaged(const char* what) const { throwCorrupt(number_, what); }
    [[nodiscard]] std::uint64_t maskWord(std::size_t word) const;
    [[nodiscard]] Bytes entryArea() const { return Bytes(bytes_).subspan(index_page::kEntries); }
    [[nodiscard]] Bytes sharedPrefix() const { return entryArea().first(prefix_); }
    [[nodiscard]] Bytes storedKey(std::size_t start, std::size_t end) const;

    PageBytes bytes_;
    PageNumber number_;
    std::size_t prefix_;
    std::size_t end_;
    bool leaf_;
};

}  // namespace stelvan::jet
