#include <algorithm>
#include <optional>
#include <string>

#include "jet/disk/page.h"
#include "jet/index/index_page.h"
#include "jet/index/index_tree.h"
#include "jet/index/index_tree_writer.h"

namespace stelvan::jet {

namespace {

std::size_t storedSize(const EntryList& entries, std::size_t first, std::size_t last,
                       std::size_t behind) {
    const std::size_t whole = entries.sizeWith(0, first, last);
    if (whole <= index_page::kEntriesSize) return whole;
    return entries.sizeWith(entries.sharedKey(first, last, behind), first, last);
}

// Where to cut a list of entries in two so that both parts fit a page, as evenly as may be.
// `lifted` is the number of entries in front of the cut that go up instead of into the left part.
std::size_t bestCut(const EntryList& entries, std::size_t lifted, std::size_t behind) {
    std::optional<std::size_t> best;
    std::size_t bestSize = index_page::kEntriesSize + 1;
    for (std::size_t cut = 1 + lifted; cut < entries.size(); ++cut) {
        const std::size_t size = std::max(storedSize(entries, 0, cut - lifted, behind),
                                          storedSize(entries, cut, entries.size(), behind));
        if (size < bestSize) {
            best = cut;
            bestSize = size;
        }
    }
    if (!best) throw Error(ErrorKind::Corrupt, "The entries of an index page cannot be parted.");
    return *best;
}

}  // namespace

EntryBytes separatorOf(Bytes bound, PageNumber child) {
    EntryBytes entry(bound.begin(), bound.end());
    for (int shift = 24; shift >= 0; shift -= 8)
        entry.push_back(static_cast<std::uint8_t>(child >> shift));
    return entry;
}

bool IndexTreeWriter::insert(Bytes entry) {
    if (entry.size() > kMaxIndexEntry) {
        throw Error(ErrorKind::RowTooLarge,
                    "Record is too large: its key does not fit a page of the index.");
    }
    const Step place = path_.back();
    const IndexPage leaf = page(place.page);
    checkPlace(leaf, place.position, entry);
    const Bytes key = entry.first(entry.size() - index_page::kRowPointer);
    const bool grown = keyIsNew(leaf, place.position, key);
    insertAt(path_.size() - 1, entry);
    return grown;
}

// An entry in the wrong place would make others unfindable.
void IndexTreeWriter::checkPlace(const IndexPage& leaf, std::size_t position, Bytes entry) const {
    const int above = position < leaf.end() ? leaf.compareWith(entry, position) : -1;
    if (above == 0) throwCorrupt(leaf.number(), "its index holds the new row already.");
    const int below = position > 0 ? leaf.compareWith(entry, leaf.startOf(position - 1)) : 1;
    if (above > 0 || below <= 0)
        throw Error(ErrorKind::Misuse, "An index was changed since it was searched.");
}

// Equal keys stand side by side, but perhaps on two leaves.
bool IndexTreeWriter::keyIsNew(const IndexPage& leaf, std::size_t position, Bytes key) const {
    if (position < leaf.end()) {
        if (leaf.hasKey(position, key)) return false;
    } else if (leaf.next() != 0) {
        const IndexPage next = page(leaf.next());
        if (!next.empty() && next.hasKey(0, key)) return false;
    }
    if (position > 0) return !leaf.hasKey(leaf.startOf(position - 1), key);
    if (leaf.previous() == 0) return true;
    const IndexPage before = page(leaf.previous());
    return before.empty() || !before.hasKey(before.lastStart(), key);
}

void IndexTreeWriter::insertAt(std::size_t level, Bytes entry) {
    const Step step = path_[level];
    IndexPageEditor now = editor(step.page);
    if (now.insert(step.position, entry)) return;
    EntryList entries(now.page());
    const std::size_t index = entries.indexOf(step.position);
    entries.insert(index, entry);
    if (now.rebuild(entries, 0, entries.size())) return;
    split(level, entries, index);
}

void IndexTreeWriter::split(std::size_t level, const EntryList& entries, std::size_t inserted) {
    if (level == 0) {
        growRoot();
        level = 1;
    }
    const PageNumber right = path_[level].page;
    const bool leaf = page(right).isLeaf();
    const std::size_t lifted = leaf ? 0 : 1;
    const std::size_t last = entries.size() - 1;
    // Rows often come in the order of a key: then full pages stay behind, not half empty ones.
    const std::size_t behind = index_page::kRowPointer + (leaf ? 0 : index_page::kChild);
    const bool atTheEnd = inserted == last && page(right).next() == 0 && last > lifted &&
                          storedSize(entries, 0, last - lifted, behind) <= index_page::kEntriesSize;
    const std::size_t cut = atTheEnd ? last : bestCut(entries, lifted, behind);
    const PageNumber left = pages_.allocate();
    if (leaf) {
        splitLeaf(left, right, entries, cut);
    } else {
        splitNode(left, right, entries, cut);
    }
    linkBefore(left, right);
    const Bytes bound = entries[cut - 1];
    insertAt(level - 1,
             separatorOf(leaf ? bound : bound.first(bound.size() - index_page::kChild), left));
}

// The root's number stays, so its content moves to a new page below it.
void IndexTreeWriter::growRoot() {
    const PageNumber copy = pages_.allocate();
    const WritablePageBytes below = file_.edit(copy);
    const WritablePageBytes root = file_.edit(root_);
    std::copy(root.begin(), root.end(), below.begin());
    path_[0].page = copy;
    path_.insert(path_.begin(), Step{root_, 0});
    IndexPageEditor::format(root, definition_, static_cast<std::uint8_t>(path_.size() - 1));
    editor(root_).setTail(copy);
}

void IndexTreeWriter::fillBoth(PageNumber left, std::size_t leftEnd, PageNumber right,
                               std::size_t rightStart, const EntryList& entries) {
    if (!editor(left).rebuild(entries, 0, leftEnd) ||
        !editor(right).rebuild(entries, rightStart, entries.size())) {
        throw Error(ErrorKind::Misuse, "The parts of an index page do not fit.");
    }
}

void IndexTreeWriter::splitLeaf(PageNumber left, PageNumber right, const EntryList& entries,
                                std::size_t cut) {
    IndexPageEditor::format(file_.edit(left), definition_, 0);
    fillBoth(left, cut, right, cut, entries);
}

// The entry before the cut goes up; the child it led to becomes the left node's tail.
void IndexTreeWriter::splitNode(PageNumber left, PageNumber right, const EntryList& entries,
                                std::size_t cut) {
    const auto childOf = [&](std::size_t index) {
        return bigU32At(entries[index], entries[index].size() - index_page::kChild);
    };
    IndexPageEditor::format(file_.edit(left), definition_,
                            std::max<std::uint8_t>(page(right).level(), 1));
    fillBoth(left, cut - 1, right, cut, entries);
    editor(left).setTail(childOf(cut - 1));
    cutNodes(childOf(cut - 1), childOf(cut));
}

void IndexTreeWriter::linkBefore(PageNumber left, PageNumber right) {
    const PageNumber previous = page(right).previous();
    editor(left).setPrevious(previous);
    editor(left).setNext(right);
    editor(right).setPrevious(left);
    if (previous != 0) editor(previous).setNext(left);
}

}  // namespace stelvan::jet
