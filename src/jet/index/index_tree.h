// One index as a tree of pages: finding, ranges, adding and removing entries.
//
// Invariants: entries ascend by key bytes, then page, then slot, and no two are equal; all leaves
// are equally deep and linked both ways in order; a node's separator is never below the last entry
// of its child; the root keeps its page number while the index lives. A page is damaged as soon as
// it breaks one of the rules that searching relies on: then Corrupt is thrown with its number, and
// no search or walk goes on for ever. A tree object holds nothing but page numbers and may be made
// anew for each operation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_page.h"
#include "jet/pages/page_allocator.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

class IndexTreeWriter;

/// No entry may be longer than this (key and row pointer), so that every page can hold two of a
/// node.
inline constexpr std::size_t kMaxIndexEntry = 1800;

/// Entries in ascending order. It copies the leaf it stands on: PageFile::release() and changes of
/// other pages do not disturb it; a change of the same index ends its use.
class TreeCursor {
public:
    /// Moves to the next entry; false after the last. Throws Corrupt.
    bool next();

    [[nodiscard]] RowId rowId() const { return rowId_; }

    /// The key of the current entry, until the next call of next().
    [[nodiscard]] Bytes key() const {
        return Bytes(entry_).first(entry_.size() - index_page::kRowPointer);
    }

private:
    friend class IndexTree;
    TreeCursor(PageFile& file, PageNumber definition) : file_(&file), definition_(definition) {}
    void loadLeaf(PageNumber leaf);
    bool nextLeaf();
    [[nodiscard]] bool inRange() const;

    PageFile* file_;
    PageNumber definition_;
    PageNumber leaf_ = 0;
    PageNumber leavesSeen_ = 0;
    std::array<std::uint8_t, kPageSize> page_{};
    std::size_t position_ = 0;  // where the next entry starts
    EntryBytes bound_;          // every key of the range begins with it, or is it
    bool exact_ = false;
    EntryBytes entry_;  // key and row pointer of the current entry
    RowId rowId_;
    bool done_ = false;
};

class IndexTree {
public:
    /// `definition` is the table's definition page, which every page of the index names. `pages`
    /// may be null where the tree is only read.
    IndexTree(PageFile& file, PageNumber root, PageNumber definition,
              PageAllocator* pages = nullptr)
        : file_(&file), root_(root), definition_(definition), pages_(pages) {}

    /// All entries.
    [[nodiscard]] TreeCursor all() const;

    /// All entries whose key begins with `prefix`.
    [[nodiscard]] TreeCursor withPrefix(Bytes prefix) const;

    /// All entries with exactly this key. (The key of an empty Binary is the beginning of others.)
    [[nodiscard]] TreeCursor withKey(Bytes key) const;

    /// All entries whose key is `from` or stands behind it.
    [[nodiscard]] TreeCursor startingAt(Bytes from) const;

    /// The first row that stands under exactly this key.
    [[nodiscard]] std::optional<RowId> find(Bytes key) const;

    /// The same; where there is none, `place` is where the key belongs.
    [[nodiscard]] std::optional<RowId> find(Bytes key, IndexPlace& place) const;

    /// The last entry whose key is below `bound`: key and row pointer.
    [[nodiscard]] std::optional<EntryBytes> lastBelow(Bytes bound) const;

    /// How many entries there are. `afterPage` is called behind each leaf: nothing read before is
    /// looked at again.
    [[nodiscard]] std::uint64_t countEntries(const std::function<void()>& afterPage) const;

    /// Whether a row other than `self` stands under exactly this key.
    [[nodiscard]] bool holdsOther(Bytes key, RowId self) const;

    /// Whether exactly this entry is there.
    [[nodiscard]] bool contains(Bytes key, RowId row) const;

    /// Adds an entry; true when no other row stands under the key, that is, when the number of
    /// different keys has grown. Throws Corrupt when the entry is there already, RowTooLarge when
    /// the key is too long.
    bool insert(Bytes key, RowId row);

    /// The same for a key that find() has just not found: the way down is known. Without steps it
    /// is looked for; there are none left in the end.
    bool insert(Bytes key, RowId row, IndexPlace& place);

    /// Removes an entry. Throws Corrupt when it is not there.
    void remove(Bytes key, RowId row);

    /// Makes `page` the empty root of a new index.
    static void makeRoot(WritablePageBytes page, PageNumber definition);

private:
    struct Spot {
        PageNumber leaf;
        std::size_t position;
    };

    [[nodiscard]] IndexTreeWriter writer(IndexPlace& place) const;
    [[nodiscard]] IndexPage descend(Bytes wanted) const;
    /// Fills the steps of `place`; the leaf that the last of them stands on.
    IndexPage findPlace(Bytes wanted, IndexPlace& place) const;
    [[nodiscard]] TreeCursor cursor(Bytes from, Bytes bound, bool exact) const;
    [[nodiscard]] std::optional<Spot> locate(Bytes wanted) const;
    [[nodiscard]] std::optional<Spot> settle(Spot spot) const;
    [[nodiscard]] std::optional<RowId> rowUnder(Bytes key, Spot spot) const;
    [[nodiscard]] static std::optional<RowId> rowUnder(Bytes key, const IndexPage& page,
                                                       std::size_t position);

    PageFile* file_;
    PageNumber root_;
    PageNumber definition_;
    PageAllocator* pages_;
};

}  // namespace stelvan::jet
