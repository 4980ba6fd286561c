#include "jet/index/index_tree.h"

#include <algorithm>

#include "jet/index/index_tree_writer.h"

namespace stelvan::jet {

namespace {

// Far more levels than a file of the largest size can hold; a chain of nodes that is longer runs in
// a circle.
constexpr std::size_t kMaxLevels = 32;
constexpr std::size_t kUsualLevels = 4;

}  // namespace

void TreeCursor::loadLeaf(PageNumber leaf) {
    const PageBytes bytes = file_->read(leaf);
    std::copy(bytes.begin(), bytes.end(), page_.begin());
    leaf_ = leaf;
    position_ = 0;
    if (!IndexPage(page_, leaf_, definition_).isLeaf()) {
        throwCorrupt(leaf_, "it should be a leaf of an index.");
    }
}

// Entries must go on rising, so that links which lead back are found out; empty leaves are counted.
bool TreeCursor::nextLeaf() {
    const PageNumber next = IndexPage(page_, leaf_, definition_).next();
    if (next == 0) return false;
    if (++leavesSeen_ > file_->pageCount())
        throwCorrupt(leaf_, "the leaves of its index run in a circle.");
    loadLeaf(next);
    const IndexPage page(page_, leaf_, definition_);
    if (!page.empty() && !entry_.empty() && page.compareWith(entry_, 0) >= 0) {
        throwCorrupt(leaf_, "its index entries do not follow those of the leaf before it.");
    }
    return true;
}

bool TreeCursor::next() {
    if (done_) return false;
    while (position_ >= IndexPage(page_, leaf_, definition_).end()) {
        if (!nextLeaf()) {
            done_ = true;
            return false;
        }
    }
    const IndexPage page(page_, leaf_, definition_);
    page.copyEntry(position_, entry_);
    position_ = page.endOf(position_);
    rowId_ = rowOfEntry(entry_);
    done_ = !inRange();
    return !done_;
}

bool TreeCursor::inRange() const {
    const Bytes current = key();
    if (exact_) return compareBytes(current, bound_) == 0;
    return current.size() >= bound_.size() &&
           std::equal(bound_.begin(), bound_.end(), current.begin());
}

IndexPage IndexTree::descend(Bytes wanted) const {
    PageNumber number = root_;
    for (std::size_t level = 0; level < kMaxLevels; ++level) {
        const IndexPage page(file_->read(number), number, definition_);
        if (page.isLeaf()) return page;
        number = page.child(page.lowerBound(wanted));
    }
    throwCorrupt(root_, "its index has no leaves.");
}

IndexPage IndexTree::findPlace(Bytes wanted, IndexPlace& place) const {
    place.steps.clear();
    place.steps.reserve(kUsualLevels);
    PageNumber number = root_;
    for (std::size_t level = 0; level < kMaxLevels; ++level) {
        const IndexPage page(file_->read(number), number, definition_);
        const std::size_t position = page.lowerBound(wanted);
        place.steps.push_back({number, position});
        if (page.isLeaf()) return page;
        number = page.child(position);
    }
    throwCorrupt(root_, "its index has no leaves.");
}

TreeCursor IndexTree::cursor(Bytes from, Bytes bound, bool exact) const {
    TreeCursor cursor(*file_, definition_);
    cursor.bound_.assign(bound.begin(), bound.end());
    cursor.exact_ = exact;
    cursor.loadLeaf(descend(from).number());
    cursor.position_ = IndexPage(cursor.page_, cursor.leaf_, definition_).lowerBound(from);
    return cursor;
}

TreeCursor IndexTree::all() const {
    return cursor({}, {}, false);
}

TreeCursor IndexTree::withPrefix(Bytes prefix) const {
    return cursor(prefix, prefix, false);
}

TreeCursor IndexTree::withKey(Bytes key) const {
    return cursor(key, key, true);
}

TreeCursor IndexTree::startingAt(Bytes from) const {
    return cursor(from, {}, false);
}

// The first entry that is not below `wanted`, behind empty leaves too; none at the end of the
// index.
std::optional<IndexTree::Spot> IndexTree::locate(Bytes wanted) const {
    const IndexPage leaf = descend(wanted);
    return settle({leaf.number(), leaf.lowerBound(wanted)});
}

std::optional<IndexTree::Spot> IndexTree::settle(Spot spot) const {
    for (PageNumber seen = 0; seen <= file_->pageCount(); ++seen) {
        const IndexPage page(file_->read(spot.leaf), spot.leaf, definition_);
        if (spot.position < page.end()) return spot;
        if (page.next() == 0) return std::nullopt;
        spot = {page.next(), 0};
    }
    throwCorrupt(spot.leaf, "the leaves of its index run in a circle.");
}

std::optional<RowId> IndexTree::rowUnder(Bytes key, Spot spot) const {
    return rowUnder(key, IndexPage(file_->read(spot.leaf), spot.leaf, definition_), spot.position);
}

std::optional<RowId> IndexTree::rowUnder(Bytes key, const IndexPage& page, std::size_t position) {
    if (!page.hasKey(position, key)) return std::nullopt;
    const Bytes stored = page.stored(position);
    if (stored.size() >= index_page::kRowPointer) return rowOfEntry(stored);
    EntryBytes entry;
    page.copyEntry(position, entry);
    return rowOfEntry(entry);
}

std::optional<RowId> IndexTree::find(Bytes key) const {
    const std::optional<Spot> spot = locate(key);
    if (!spot) return std::nullopt;
    return rowUnder(key, *spot);
}

std::optional<RowId> IndexTree::find(Bytes key, IndexPlace& place) const {
    const IndexPage leaf = findPlace(key, place);
    const std::size_t position = place.steps.back().position;
    if (position < leaf.end()) return rowUnder(key, leaf, position);
    const std::optional<Spot> spot = settle({leaf.number(), position});
    if (!spot) return std::nullopt;
    return rowUnder(key, *spot);
}

// Empty leaves may stand before the one that has it.
std::optional<EntryBytes> IndexTree::lastBelow(Bytes bound) const {
    const IndexPage leaf = descend(bound);
    PageNumber number = leaf.number();
    std::size_t end = leaf.lowerBound(bound);
    for (PageNumber seen = 0; seen <= file_->pageCount(); ++seen) {
        const IndexPage page(file_->read(number), number, definition_);
        if (seen > 0) end = page.end();
        if (end > 0) {
            EntryBytes entry;
            page.copyEntry(page.startOf(end - 1), entry);
            return entry;
        }
        if (page.previous() == 0) return std::nullopt;
        number = page.previous();
    }
    throwCorrupt(number, "the leaves of its index run in a circle.");
}

std::uint64_t IndexTree::countEntries(const std::function<void()>& afterPage) const {
    std::uint64_t count = 0;
    PageNumber number = descend({}).number();
    for (PageNumber seen = 0; seen <= file_->pageCount(); ++seen) {
        const IndexPage page(file_->read(number), number, definition_);
        if (!page.isLeaf()) throwCorrupt(number, "it should be a leaf of an index.");
        count += page.entryCount();
        const PageNumber next = page.next();
        if (next == 0) return count;
        number = next;
        afterPage();
    }
    throwCorrupt(number, "the leaves of its index run in a circle.");
}

bool IndexTree::holdsOther(Bytes key, RowId self) const {
    std::optional<Spot> spot = locate(key);
    if (!spot) return false;
    std::optional<RowId> row = rowUnder(key, *spot);
    if (!row || *row != self) return row.has_value();
    const IndexPage page(file_->read(spot->leaf), spot->leaf, definition_);
    spot = settle({spot->leaf, page.endOf(spot->position)});
    return spot && rowUnder(key, *spot).has_value();
}

bool IndexTree::contains(Bytes key, RowId row) const {
    EntryBytes entry;
    makeEntry(key, row, entry);
    const std::optional<Spot> spot = locate(entry);
    if (!spot) return false;
    const IndexPage page(file_->read(spot->leaf), spot->leaf, definition_);
    return page.compareWith(entry, spot->position) == 0;
}

bool IndexTree::insert(Bytes key, RowId row) {
    IndexPlace place;
    return insert(key, row, place);
}

bool IndexTree::insert(Bytes key, RowId row, IndexPlace& place) {
    makeEntry(key, row, place.entry);
    if (place.steps.empty()) findPlace(place.entry, place);
    const bool grown = writer(place).insert(place.entry);
    place.steps.clear();
    return grown;
}

void IndexTree::remove(Bytes key, RowId row) {
    IndexPlace place;
    makeEntry(key, row, place.entry);
    findPlace(place.entry, place);
    writer(place).remove(place.entry);
}

IndexTreeWriter IndexTree::writer(IndexPlace& place) const {
    if (pages_ == nullptr)
        throw Error(ErrorKind::Misuse, "This index was opened for reading only.");
    return {*file_, root_, definition_, *pages_, place.steps};
}

void IndexTree::makeRoot(WritablePageBytes page, PageNumber definition) {
    IndexPageEditor::format(page, definition, 0);
}

}  // namespace stelvan::jet
