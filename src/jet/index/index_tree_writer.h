// One change of an index tree: an entry in or out, with all that follows for the pages above.
//
// A full page is split so that its upper part keeps the page number: the entry above it stays
// right, and one for the new page with the lower part is put in front of it. A leaf that becomes
// sparse is joined with a neighbour that has room, one that loses its last entry is taken out of
// the tree, and a node left with nothing but its tail child is joined with a neighbour, too.
#pragma once

#include <cstddef>
#include <vector>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_page_editor.h"
#include "jet/pages/page_allocator.h"

namespace stelvan::jet {

class IndexTreeWriter {
public:
    /// `path` leads to where the entry stands, or where it belongs; it is used up.
    IndexTreeWriter(PageFile& file, PageNumber root, PageNumber definition, PageAllocator& pages,
                    std::vector<IndexPlace::Step>& path)
        : file_(file), root_(root), definition_(definition), pages_(pages), path_(path) {}

    /// See IndexTree. Throws Misuse where the entry does not belong to the place.
    bool insert(Bytes entry);
    void remove(Bytes entry);

private:
    using Step = IndexPlace::Step;

    [[nodiscard]] IndexPage page(PageNumber number) const {
        return {file_.read(number), number, definition_};
    }
    [[nodiscard]] IndexPageEditor editor(PageNumber number) const {
        return {file_.edit(number), number, definition_};
    }

    void checkPlace(const IndexPage& leaf, std::size_t position, Bytes entry) const;
    [[nodiscard]] bool keyIsNew(const IndexPage& leaf, std::size_t position, Bytes key) const;

    void insertAt(std::size_t level, Bytes entry);
    [[nodiscard]] bool addEntry(PageNumber number, std::size_t position, Bytes entry);
    void split(std::size_t level, const EntryList& entries, std::size_t inserted);
    void growRoot();
    void splitLeaf(PageNumber left, PageNumber right, const EntryList& entries, std::size_t cut);
    void splitNode(PageNumber left, PageNumber right, const EntryList& entries, std::size_t cut);
    void fillBoth(PageNumber left, std::size_t leftEnd, PageNumber right, std::size_t rightStart,
                  const EntryList& entries);
    void linkBefore(PageNumber left, PageNumber right);

    void mergeLeaf();
    [[nodiscard]] bool moveEntries(PageNumber from, PageNumber into);
    void removePage(std::size_t level);
    void removeChild(std::size_t level);
    void collapseRoot();
    void joinNode(std::size_t level);
    void joinRight(std::size_t level, PageNumber node, std::size_t position);
    void joinLeft(std::size_t level, PageNumber node);
    void unlink(PageNumber number);
    void linkNodes(PageNumber left, PageNumber right);
    void cutNodes(PageNumber left, PageNumber right);

    PageFile& file_;
    PageNumber root_;
    PageNumber definition_;
    PageAllocator& pages_;
    std::vector<Step>& path_;
};

/// The entry of a node that leads to `child`: the key and row pointer of `bound`, then the child's
/// number.
[[nodiscard]] EntryBytes separatorOf(Bytes bound, PageNumber child);

}  // namespace stelvan::jet
