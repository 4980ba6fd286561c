#include "model/compare/merge_lists.h"

#include <algorithm>
#include <array>
#include <utility>

#include "model/compare/alignment.h"

namespace stelvan::model {
namespace {

using Entry = MergedList::Entry;
using Place = std::optional<std::size_t> Entry::*;

constexpr std::size_t kStart = 0;  // the anchor of what follows nothing; entry n has anchor n + 1

class ListMerge {
public:
    ListMerge(std::span<const Key> base, std::span<const Key> ours, std::span<const Key> theirs,
              Side decides)
        : ours_(ours),
          theirs_(theirs),
          first_(decides == Side::Ours ? &Entry::ours : &Entry::theirs) {
        const Alignment toOurs = align(base, ours);
        const Alignment toTheirs = align(base, theirs);
        for (std::size_t at = 0; at < base.size(); ++at) {
            Entry entry{at, {}, {}};
            if (toOurs.partners[at]) entry.ours = toOurs.partners[at]->after;
            if (toTheirs.partners[at]) entry.theirs = toTheirs.partners[at]->after;
            (entry.ours && entry.theirs ? common_ : result_.removed).push_back(entry);
        }
        pairAdded(toOurs.isNew, toTheirs.isNew);
    }

    MergedList merge() {
        orderCommon();
        const Blocks ours = blocksOf(&Entry::ours, ours_.size());
        const Blocks theirs = blocksOf(&Entry::theirs, theirs_.size());
        dropMisplaced(ours, theirs);
        for (std::size_t anchor = kStart; anchor <= common_.size(); ++anchor) {
            if (anchor != kStart) result_.entries.push_back(common_[anchor - 1]);
            mergeBlocks(ours[anchor], theirs[anchor]);
        }
        return std::move(result_);
    }

private:
    using Block = std::vector<std::size_t>;  // of positions in added_
    using Blocks = std::vector<Block>;       // by anchor

    [[nodiscard]] const Key& keyOf(const Entry& entry) const {
        return entry.ours ? ours_[*entry.ours] : theirs_[*entry.theirs];
    }

    void pairAdded(const std::vector<bool>& newInOurs, const std::vector<bool>& newInTheirs) {
        std::vector<std::size_t> left, right;
        std::vector<Key> leftKeys, rightKeys;
        for (std::size_t at = 0; at < ours_.size(); ++at)
            if (newInOurs[at]) left.push_back(at), leftKeys.push_back(ours_[at]);
        for (std::size_t at = 0; at < theirs_.size(); ++at)
            if (newInTheirs[at]) right.push_back(at), rightKeys.push_back(theirs_[at]);
        const Alignment both = align(leftKeys, rightKeys);
        for (std::size_t at = 0; at < left.size(); ++at) {
            Entry entry{{}, left[at], {}};
            if (both.partners[at]) entry.theirs = right[both.partners[at]->after];
            added_.push_back(entry);
        }
        for (std::size_t at = 0; at < right.size(); ++at)
            if (both.isNew[at]) added_.push_back({{}, {}, right[at]});
    }

    /// Whether `left` comes before `right`: as the side says that changed it.
    static bool comesBefore(const Entry& left, const Entry& right) {
        const bool base = left.base < right.base;
        const bool ours = left.ours < right.ours;
        const bool theirs = left.theirs < right.theirs;
        return ours == theirs ? ours : !base;
    }

    void orderCommon() {
        const auto isInOrder = [&](Place place) {
            return std::ranges::is_sorted(common_, {}, place);
        };
        const auto sortBy = [&](Place place) { std::ranges::sort(common_, {}, place); };
        if (isInOrder(&Entry::ours)) return sortBy(&Entry::theirs);
        if (isInOrder(&Entry::theirs)) return sortBy(&Entry::ours);
        sortBy(first_);
        if (isInOrder(&Entry::ours) && isInOrder(&Entry::theirs)) return;
        constexpr std::size_t kMost = 5'000;  // each two are looked at
        result_.orderConflict = common_.size() > kMost || !orderByPairs();
    }

    /// False, and nothing done, where the orders of each two lead in a circle.
    bool orderByPairs() {
        std::vector<std::optional<Entry>> ordered(common_.size());
        for (const Entry& entry : common_) {
            const auto before = std::ranges::count_if(common_, [&](const Entry& other) {
                return other.base != entry.base && comesBefore(other, entry);
            });
            auto& place = ordered[static_cast<std::size_t>(before)];
            if (place) return false;  // with two as many before them, there is a circle
            place = entry;
        }
        std::ranges::transform(ordered, common_.begin(), [](const auto& place) { return *place; });
        return true;
    }

    /// What one side added, by the entry that all have and that it follows there.
    [[nodiscard]] Blocks blocksOf(Place side, std::size_t size) const {
        constexpr std::size_t kNothing = static_cast<std::size_t>(-1);
        std::vector<std::size_t> anchorAt(size, kNothing), addedAt(size, kNothing);
        for (std::size_t at = 0; at < common_.size(); ++at) anchorAt[*(common_[at].*side)] = at + 1;
        for (std::size_t at = 0; at < added_.size(); ++at)
            if (added_[at].*side) addedAt[*(added_[at].*side)] = at;
        Blocks blocks(common_.size() + 1);
        std::size_t anchor = kStart;
        for (std::size_t at = 0; at < size; ++at) {
            if (anchorAt[at] != kNothing) anchor = anchorAt[at];
            if (addedAt[at] != kNothing) blocks[anchor].push_back(addedAt[at]);
        }
        return blocks;
    }

    [[nodiscard]] bool isShared(std::size_t added) const {
        return added_[added].ours && added_[added].theirs;
    }

    /// What both added behind different entries, or in different orders, stays where the deciding
    /// side has it.
    void dropMisplaced(const Blocks& ours, const Blocks& theirs) {
        misplaced_.assign(added_.size(), false);
        for (std::size_t anchor = 0; anchor < ours.size(); ++anchor) {
            Block left, right;
            const auto shared = [&](std::size_t added) { return isShared(added); };
            std::ranges::copy_if(ours[anchor], std::back_inserter(left), shared);
            std::ranges::copy_if(theirs[anchor], std::back_inserter(right), shared);
            if (left == right) continue;
            result_.orderConflict = true;
            for (const Block* block : {&left, &right})
                for (const std::size_t added : *block) misplaced_[added] = true;
        }
    }

    void mergeBlocks(const Block& ours, const Block& theirs) {
        const bool oursFirst = first_ == &Entry::ours;
        const Block& leading = oursFirst ? ours : theirs;
        const Block& other = oursFirst ? theirs : ours;
        auto right = other.begin();
        Block leftRun, rightRun;
        const auto takeRightUntil = [&](std::size_t shared) {
            for (; right != other.end() && *right != shared; ++right)
                if (!misplaced_[*right]) rightRun.push_back(*right);
            if (right != other.end()) ++right;
        };
        for (const std::size_t added : leading) {
            const bool meets = isShared(added) && !misplaced_[added];
            if (meets) {
                takeRightUntil(added);
                emitRuns(leftRun, rightRun);
                result_.entries.push_back(added_[added]);
            } else {
                leftRun.push_back(added);
            }
        }
        takeRightUntil(added_.size());
        emitRuns(leftRun, rightRun);
    }

    void emitRuns(Block& left, Block& right) {
        const bool swap = !left.empty() && !right.empty() &&
                          keyOf(added_[right.front()]) < keyOf(added_[left.front()]);
        for (const Block* run : swap ? std::array{&right, &left} : std::array{&left, &right})
            for (const std::size_t added : *run) result_.entries.push_back(added_[added]);
        left.clear();
        right.clear();
    }

    std::span<const Key> ours_, theirs_;
    Place first_;  // the side that decides
    std::vector<Entry> common_;
    std::vector<Entry> added_;
    std::vector<bool> misplaced_;
    MergedList result_;
};

}  // namespace

MergedList mergeLists(std::span<const Key> base, std::span<const Key> ours,
                      std::span<const Key> theirs, Side decides) {
    return ListMerge(base, ours, theirs, decides).merge();
}

}  // namespace stelvan::model
