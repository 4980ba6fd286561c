#include "model/compare/alignment.h"

#include <algorithm>
#include <map>

namespace stelvan::model {
namespace {

using Places = std::vector<std::size_t>;

/// Where each entry stands, by key.
std::map<Key, Places> placesOf(std::span<const Key> entries) {
    std::map<Key, Places> places;
    for (std::size_t at = 0; at < entries.size(); ++at) places[entries[at]].push_back(at);
    return places;
}

/// For each entry before, the entries after that it may be taken for, in order.
std::vector<Places> candidates(std::span<const Key> before, std::span<const Key> after) {
    constexpr std::size_t kMost = 1'000'000;  // keeps time and memory within bounds
    const std::map<Key, Places> places = placesOf(after);
    std::vector<Places> all(before.size());
    std::size_t count = 0;
    for (std::size_t at = 0; at < before.size() && count <= kMost; ++at) {
        const auto found = places.find(before[at]);
        if (found == places.end()) continue;
        count += found->second.size();
        if (count <= kMost) all[at] = found->second;
    }
    if (count <= kMost) return all;
    std::map<Key, std::size_t> seen;
    for (std::size_t at = 0; at < before.size(); ++at) {
        all[at].clear();
        const auto found = places.find(before[at]);
        const std::size_t occurrence = seen[before[at]]++;
        if (found != places.end() && occurrence < found->second.size())
            all[at].push_back(found->second[occurrence]);
    }
    return all;
}

/// The longest common subsequence: the best chain of candidates that ascends on both sides, grown
/// by keeping, for each length, the chain that ends earliest.
class LongestChain {
public:
    void add(std::size_t before, std::size_t after) {
        const auto at = std::ranges::lower_bound(ends_, after);
        const auto length = static_cast<std::size_t>(at - ends_.begin());
        links_.push_back({before, after, length == 0 ? kNone : lastLinks_[length - 1]});
        if (at == ends_.end()) {
            ends_.push_back(after);
            lastLinks_.push_back(links_.size() - 1);
        } else {
            *at = after;
            lastLinks_[length] = links_.size() - 1;
        }
    }

    template <typename Keep>
    void forEach(Keep keep) const {
        if (lastLinks_.empty()) return;
        for (std::size_t at = lastLinks_.back(); at != kNone; at = links_[at].previous)
            keep(links_[at].before, links_[at].after);
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    struct Link {
        std::size_t before, after, previous;
    };
    std::vector<Link> links_;
    std::vector<std::size_t> ends_;       // by length of chain, less one
    std::vector<std::size_t> lastLinks_;  // the same
};

/// What has a partner elsewhere in the order: the first one left takes the first one left.
void pairMoved(std::span<const Key> before, std::span<const Key> after, Alignment& alignment) {
    std::map<Key, Places> left;
    for (std::size_t at = after.size(); at-- > 0;)
        if (alignment.isNew[at]) left[after[at]].push_back(at);
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (alignment.partners[at]) continue;
        const auto found = left.find(before[at]);
        if (found == left.end() || found->second.empty()) continue;
        alignment.partners[at] = {found->second.back(), false};
        alignment.isNew[found->second.back()] = false;
        found->second.pop_back();
    }
}

}  // namespace

Alignment align(std::span<const Key> before, std::span<const Key> after) {
    Alignment alignment{std::vector<std::optional<Alignment::Partner>>(before.size()),
                        std::vector<bool>(after.size(), true)};
    const auto keep = [&](std::size_t left, std::size_t right) {
        alignment.partners[left] = {right, true};
        alignment.isNew[right] = false;
    };
    std::size_t head = 0;
    const std::size_t shorter = std::min(before.size(), after.size());
    for (; head < shorter && before[head] == after[head]; ++head) keep(head, head);
    std::size_t tail = 0;
    for (; tail < shorter - head && before.rbegin()[tail] == after.rbegin()[tail]; ++tail)
        keep(before.size() - 1 - tail, after.size() - 1 - tail);
    if (head + tail == before.size() || head + tail == after.size()) return alignment;

    const auto middle = [&](std::span<const Key> list) {
        return list.subspan(head, list.size() - head - tail);
    };
    const std::vector<Places> all = candidates(middle(before), middle(after));
    LongestChain chain;
    for (std::size_t at = 0; at < all.size(); ++at)
        for (std::size_t i = all[at].size(); i-- > 0;) chain.add(at, all[at][i]);
    chain.forEach([&](std::size_t left, std::size_t right) { keep(head + left, head + right); });
    pairMoved(before, after, alignment);
    return alignment;
}

}  // namespace stelvan::model
