#include "browser/index/search.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <tuple>

#include "base/text.h"
#include "jet/rows/text.h"
#include "model/core/values.h"

namespace stelvan::browser {
namespace {

bool holds(std::string_view text, std::string_view part) {
    return ::memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

/// Descriptions are folded where they stand: nearly all are plain ASCII.
class TextSearch {
public:
    explicit TextSearch(const std::string& query) : query_(query) {}

    [[nodiscard]] bool finds(std::string_view text) {
        folded_.assign(text);
        bool plain = true;
        for (char& c : folded_) {
            plain = plain && static_cast<unsigned char>(c) < 0x80;
            c = base::upperCase(c);
        }
        if (!plain) folded_ = jet::foldName(text);
        return holds(folded_, query_);
    }

private:
    const std::string& query_;
    std::string folded_;
};

class NameSearch {
public:
    NameSearch(const ModelIndex& index, const std::string& query)
        : index_(index),
          query_(query),
          id_(model::wholeNumber(jet::Value(query))),
          groups_(index.groups().size()) {
        for (std::size_t at = 0; at < groups_.size(); ++at)
            groups_[at] = holds(index.groups()[at], query);
    }

    [[nodiscard]] std::optional<Reason> reasonFor(const IndexedItem& item) const {
        if (item.category == gem::NO_CATEGORY) return std::nullopt;
        if (id_ && item.id == *id_) return Reason::Id;
        const std::string_view name = index_.foldedNameOf(item);
        if (name.starts_with(query_)) return Reason::NameBegins;
        if (holds(name, query_)) return Reason::NameHolds;
        if (groups_[item.group]) return Reason::Group;
        return std::nullopt;
    }

private:
    const ModelIndex& index_;
    const std::string& query_;
    std::optional<std::int64_t> id_;
    std::vector<bool> groups_;
};

}  // namespace

std::string foldedQuery(std::string_view typed) {
    return jet::foldName(base::trimBlanks(typed));
}

std::vector<Match> search(const ModelIndex& index, const std::string& query, std::size_t most) {
    const NameSearch names(index, query);
    const std::span<const IndexedItem> items = index.items();
    std::vector<Match> found;
    for (std::size_t at = 0; at < items.size(); ++at)
        if (const auto reason = names.reasonFor(items[at])) found.push_back({at, *reason});
    const auto rank = [&](const Match& match) {
        const IndexedItem& item = items[match.item];
        const bool longer = item.foldedSize != query.size();
        return std::tuple(match.reason, match.reason == Reason::NameBegins && longer, item.category,
                          match.item);
    };
    const auto end = found.begin() + static_cast<std::ptrdiff_t>(std::min(most, found.size()));
    std::ranges::partial_sort(found, end, {}, rank);
    found.erase(end, found.end());
    return found;
}

bool searchTexts(ModelIndex& index, const std::string& query, std::size_t most,
                 std::vector<Match>& found) {
    if (found.size() >= most) return true;
    std::vector<bool> known(index.items().size());
    for (const Match& match : found) known[match.item] = true;
    TextSearch texts(query);
    const auto begin = static_cast<std::ptrdiff_t>(found.size());
    const bool read = index.eachText([&](std::size_t item, std::string_view text) {
        const bool shown = index.items()[item].category != gem::NO_CATEGORY;
        if (shown && !known[item] && texts.finds(text)) found.push_back({item, Reason::Text});
    });
    const auto rank = [&](const Match& match) {
        return std::pair(index.items()[match.item].category, match.item);
    };
    std::ranges::sort(found.begin() + begin, found.end(), {}, rank);
    if (found.size() > most)
        found.erase(found.begin() + static_cast<std::ptrdiff_t>(most), found.end());
    return read;
}

}  // namespace stelvan::browser
