#include "jet/check/check_index.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>

namespace stelvan::jet {

namespace {

class TreeCheck {
public:
    TreeCheck(PageFile& file, PageNumber definition, CheckLog& log)
        : file_(file), definition_(definition), log_(log) {}

    CheckedTree run(PageNumber root) {
        visit(root, 0, EntryBytes(), std::nullopt);
        checkLeafLinks();
        return std::move(tree_);
    }

private:
    // Everything below `number` must lie above `low` and not above `high`.
    void visit(PageNumber number, std::size_t depth, const EntryBytes& low,
               const std::optional<EntryBytes>& high) {
        if (!seen_.insert(number).second) {
            log_.fault(number, "the page stands in an index tree twice.");
            return;
        }
        tree_.pages.push_back(number);
        log_.attempt(number, [&] {
            const IndexPage page(file_.read(number), number, definition_);
            checkHeader(page, depth);
            checkMask(page);
            if (page.isLeaf()) {
                visitLeaf(page, depth, low, high);
            } else {
                visitNode(page, depth, low, high);
            }
        });
    }

    void checkHeader(const IndexPage& page, std::size_t depth) {
        const PageBytes bytes = file_.read(page.number());
        if (bytes[1] != kPageInUse)
            log_.fault(page.number(), "the second byte of an index page is not 1.");
        if (u32At(bytes, 8) != 0)
            log_.fault(page.number(), "an unused field of an index page is not 0.");
        if (page.isLeaf() && (page.tail() != 0 || page.level() != 0)) {
            log_.fault(page.number(), "an index leaf has a tail child or a level above 0.");
        }
        if (depth == 0 && (page.previous() != 0 || page.next() != 0)) {
            log_.fault(page.number(), "the root of an index has neighbours.");
        }
        if (depth > 0 && page.empty())
            log_.note(page.number(), "an index page below the root has no entries.");
    }

    void checkMask(const IndexPage& page) {
        const PageBytes bytes = file_.read(page.number());
        for (std::size_t bit = page.end() + 1; bit < index_page::kMaskSize * 8; ++bit) {
            if ((bytes[index_page::kMask + bit / 8] >> (bit % 8) & 1) != 0) {
                log_.fault(page.number(),
                           "the mask of an index page has bits behind its last entry.");
                return;
            }
        }
        if ((bytes[index_page::kMask] & 1) != 0) {
            log_.fault(page.number(), "the mask of an index page claims an entry of no length.");
        }
    }

    // The sortable part of each entry in turn, checked against the one before it and the bounds.
    template <typename Use>
    void eachEntry(const IndexPage& page, const EntryBytes& low,
                   const std::optional<EntryBytes>& high, Use&& use) {
        const std::size_t behind = page.isLeaf() ? 0 : index_page::kChild;
        EntryBytes before = low;
        EntryBytes entry;
        for (std::size_t start = 0; start < page.end(); start = page.endOf(start)) {
            page.copyEntry(start, entry);
            const std::size_t prefixRoom = entry.size() - behind - index_page::kRowPointer;
            if (page.prefixSize() > prefixRoom) {
                log_.fault(page.number(),
                           "the prefix of an index page is longer than one of its keys.");
            }
            entry.resize(entry.size() - behind);
            if (!before.empty() && compareBytes(before, entry) >= 0) {
                log_.fault(page.number(), "the entries of an index do not ascend.");
            }
            if (high && compareBytes(entry, *high) > 0) {
                log_.fault(page.number(), "an index entry lies above the separator of its page.");
            }
            use(start, before, entry);
            before = entry;
        }
    }

    void visitLeaf(const IndexPage& page, std::size_t depth, const EntryBytes& low,
                   const std::optional<EntryBytes>& high) {
        if (leafDepth_ && *leafDepth_ != depth) {
            log_.fault(page.number(), "the leaves of an index are not equally deep.");
        }
        leafDepth_ = depth;
        leaves_.push_back(page.number());
        eachEntry(page, low, high, [&](std::size_t, const EntryBytes&, const EntryBytes& entry) {
            const Bytes key = Bytes(entry).first(entry.size() - index_page::kRowPointer);
            tree_.entries.push_back({{key.begin(), key.end()}, rowOfEntry(entry)});
        });
    }

    void visitNode(const IndexPage& page, std::size_t depth, const EntryBytes& low,
                   const std::optional<EntryBytes>& high) {
        constexpr std::size_t kMaxDepth = 32;
        if (depth > kMaxDepth) throwCorrupt(page.number(), "its index has too many levels.");
        eachEntry(page, low, high,
                  [&](std::size_t start, const EntryBytes& before, const EntryBytes& entry) {
                      visit(page.child(start), depth + 1, before, entry);
                  });
        const EntryBytes last = page.empty() ? low : lastOf(page);
        if (page.tail() == 0) {
            log_.fault(page.number(), "an index node has no tail child.");
            return;
        }
        visit(page.tail(), depth + 1, last, high);
        if (page.level() != 0 && leafDepth_ && page.level() != *leafDepth_ - depth) {
            log_.fault(page.number(), "an index node has the wrong level.");
        }
    }

    static EntryBytes lastOf(const IndexPage& page) {
        EntryBytes entry;
        page.copyEntry(page.lastStart(), entry);
        entry.resize(entry.size() - index_page::kChild);
        return entry;
    }

    void checkLeafLinks() {
        for (std::size_t i = 0; i < leaves_.size(); ++i) {
            const PageBytes bytes = file_.read(leaves_[i]);
            const PageNumber previous = i == 0 ? 0 : leaves_[i - 1];
            const PageNumber next = i + 1 == leaves_.size() ? 0 : leaves_[i + 1];
            if (u32At(bytes, index_page::kPrevious) != previous ||
                u32At(bytes, index_page::kNext) != next) {
                log_.fault(leaves_[i], "an index leaf is not linked to its neighbours.");
            }
        }
    }

    PageFile& file_;
    PageNumber definition_;
    CheckLog& log_;
    CheckedTree tree_;
    std::unordered_set<PageNumber> seen_;
    std::vector<PageNumber> leaves_;
    std::optional<std::size_t> leafDepth_;
};

}  // namespace

CheckedTree checkTree(PageFile& file, PageNumber root, PageNumber definition, CheckLog& log) {
    return TreeCheck(file, definition, log).run(root);
}

}  // namespace stelvan::jet
