#include <algorithm>

#include "jet/disk/page.h"
#include "jet/index/index_page.h"
#include "jet/index/index_tree_writer.h"

namespace stelvan::jet {

namespace {

// A leaf with less than this looks for a neighbour to be joined with; together they must leave room
// for entries to come.
constexpr std::size_t kSparse = index_page::kEntriesSize / 3;
constexpr std::size_t kMostMerged = index_page::kEntriesSize / 4 * 3;

Bytes boundOf(const EntryBytes& separator) {
    return Bytes(separator).first(separator.size() - index_page::kChild);
}

}  // namespace

void IndexTreeWriter::remove(Bytes entry) {
    const Step place = path_.back();
    const IndexPage leaf = page(place.page);
    if (place.position == leaf.end() || leaf.compareWith(entry, place.position) != 0) {
        throwCorrupt(place.page, "its index does not hold a row of the table.");
    }
    editor(place.page).erase(place.position);
    if (path_.size() == 1) return;
    const IndexPage rest = page(place.page);
    if (rest.empty()) {
        removePage(path_.size() - 1);
    } else if (rest.end() < kSparse) {
        mergeLeaf();
    }
}

// Entries go to the right, so that what bounds them from above stays right. Only neighbours below
// the same node are looked at.
void IndexTreeWriter::mergeLeaf() {
    const std::size_t level = path_.size() - 1;
    Step& above = path_[level - 1];
    Step& leaf = path_[level];
    const IndexPage parent = page(above.page);
    if (above.position < parent.end()) {
        const PageNumber right = parent.child(parent.endOf(above.position));
        if (moveEntries(leaf.page, right)) return removePage(level);
    }
    if (above.position == 0) return;
    const std::size_t before = parent.startOf(above.position - 1);
    const PageNumber left = parent.child(before);
    if (!moveEntries(left, leaf.page)) return;
    above.position = before;
    leaf.page = left;
    removePage(level);
}

// Puts the entries of a leaf in front of those of its right neighbour where both fit with some room
// to spare.
bool IndexTreeWriter::moveEntries(PageNumber from, PageNumber into) {
    const IndexPage left = page(from);
    const IndexPage right = page(into);
    if (!left.isLeaf() || !right.isLeaf()) throwCorrupt(into, "it should be a leaf of an index.");
    if (left.end() + right.end() > kMostMerged) return false;
    EntryList entries(left);
    entries.append(right);
    return editor(into).rebuild(entries, 0, entries.size());
}

// Takes a page without content out of the tree.
void IndexTreeWriter::removePage(std::size_t level) {
    const PageNumber number = path_[level].page;
    unlink(number);
    removeChild(level - 1);
    pages_.release(number);
}

void IndexTreeWriter::removeChild(std::size_t level) {
    const Step step = path_[level];
    IndexPageEditor node = editor(step.page);
    const IndexPage now = node.page();
    if (step.position < now.end()) {
        node.erase(step.position);
    } else if (!now.empty()) {
        const std::size_t last = now.lastStart();
        node.setTail(now.child(last));
        node.erase(last);
    } else if (level > 0) {
        removePage(level);
        return;
    } else {
        IndexPageEditor::format(file_.edit(root_), definition_, 0);
        return;
    }
    if (!node.page().empty()) return;
    if (level == 0) {
        collapseRoot();
    } else {
        joinNode(level);
    }
}

// A root with a single child takes that child's place.
void IndexTreeWriter::collapseRoot() {
    for (IndexPage root = page(root_); !root.isLeaf() && root.empty(); root = page(root_)) {
        const PageNumber child = root.tail();
        const WritablePageBytes to = file_.edit(root_);
        static_cast<void>(page(child));  // refused unless it is a page of this index
        const PageBytes from = file_.read(child);
        std::copy(from.begin(), from.end(), to.begin());
        editor(root_).setPrevious(0);
        editor(root_).setNext(0);
        pages_.release(child);
    }
}

void IndexTreeWriter::joinNode(std::size_t level) {
    const PageNumber node = path_[level].page;
    const Step above = path_[level - 1];
    const IndexPage parent = page(above.page);
    if (above.position < parent.end()) {
        joinRight(level, node, above.position);
    } else if (!parent.empty()) {
        joinLeft(level, node);
    }
}

// The node's only child goes to its right neighbour as that one's first; or, where the neighbour is
// full, the neighbour's first child comes over.
void IndexTreeWriter::joinRight(std::size_t level, PageNumber node, std::size_t position) {
    const PageNumber parent = path_[level - 1].page;
    const PageNumber child = page(node).tail();
    EntryBytes separator;
    page(parent).copyEntry(position, separator);
    const PageNumber right = page(parent).child(page(parent).endOf(position));
    const PageNumber moved = page(right).child(0);
    const EntryBytes first = separatorOf(boundOf(separator), child);
    linkNodes(child, moved);
    if (addEntry(right, 0, first)) {
        unlink(node);
        removeChild(level - 1);
        pages_.release(node);
        return;
    }
    EntryBytes bound;
    page(right).copyEntry(0, bound);
    editor(right).erase(0);
    cutNodes(moved, page(right).child(0));
    if (!addEntry(node, 0, first))
        throw Error(ErrorKind::Misuse, "An empty index node has no room.");
    editor(node).setTail(moved);
    editor(parent).erase(position);
    insertAt(level - 1, separatorOf(boundOf(bound), node));
}

// The same with the left neighbour, whose tail child stands before the node's only one.
void IndexTreeWriter::joinLeft(std::size_t level, PageNumber node) {
    const PageNumber parent = path_[level - 1].page;
    const std::size_t position = page(parent).lastStart();
    const PageNumber child = page(node).tail();
    EntryBytes separator;
    page(parent).copyEntry(position, separator);
    const PageNumber left = page(parent).child(position);
    const PageNumber moved = page(left).tail();
    const EntryBytes last = separatorOf(boundOf(separator), moved);
    linkNodes(moved, child);
    if (addEntry(left, page(left).end(), last)) {
        editor(left).setTail(child);
        unlink(node);
        removeChild(level - 1);
        pages_.release(node);
        return;
    }
    const std::size_t taken = page(left).lastStart();
    EntryBytes bound;
    page(left).copyEntry(taken, bound);
    const PageNumber tail = page(left).child(taken);
    editor(left).erase(taken);
    editor(left).setTail(tail);
    cutNodes(tail, moved);
    if (!addEntry(node, 0, last))
        throw Error(ErrorKind::Misuse, "An empty index node has no room.");
    path_[level - 1].position = position;
    editor(parent).erase(position);
    insertAt(level - 1, separatorOf(boundOf(bound), left));
}

// Adds an entry if it fits, with a new prefix if need be.
bool IndexTreeWriter::addEntry(PageNumber number, std::size_t position, Bytes entry) {
    IndexPageEditor now = editor(number);
    if (now.insert(position, entry)) return true;
    EntryList entries(now.page());
    entries.insert(entries.indexOf(position), entry);
    return now.rebuild(entries, 0, entries.size());
}

void IndexTreeWriter::unlink(PageNumber number) {
    const PageNumber previous = page(number).previous();
    const PageNumber next = page(number).next();
    if (previous != 0) editor(previous).setNext(next);
    if (next != 0) editor(next).setPrevious(previous);
}

// Leaves are linked over the whole index, nodes only with those of the same parent.
void IndexTreeWriter::linkNodes(PageNumber left, PageNumber right) {
    if (page(left).isLeaf()) return;
    editor(left).setNext(right);
    editor(right).setPrevious(left);
}

void IndexTreeWriter::cutNodes(PageNumber left, PageNumber right) {
    if (page(left).isLeaf()) return;
    editor(left).setNext(0);
    editor(right).setPrevious(0);
}

}  // namespace stelvan::jet
