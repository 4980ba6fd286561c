#include "model/compare/merge_links.h"

#include <algorithm>
#include <array>

#include "model/compare/change_text.h"
#include "model/compare/merge_items.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

using List = std::span<const KeyedRow>;

/// A column of ColumnVersions by version.
using Version = std::optional<std::size_t> ColumnVersions::*;

class LinkMerge {
public:
    LinkMerge(Part part, const Model& base, const Model& ours, const Model& theirs,
              const LinkRules& rules, Merge& result)
        : part_(part),
          models_{&ours, &theirs, &base},
          rules_(rules),
          result_(result),
          columns_(columnVersions(base[part], ours[part], theirs[part])) {
        const PartFacts& facts = factsOf(part);
        const Table& merged = result.merged[part];
        target_ = merged.find(facts.target);
        place_ = merged.find(facts.order);
        const auto owner = merged.find(facts.id);
        for (std::size_t at = 0; at < columns_.size(); ++at)
            if (at != target_ && at != place_ && at != owner) others_.push_back(at);
    }

    void mergeOwner(List base, List ours, List theirs) {
        const KeyedRow& any = !ours.empty()     ? ours.front()
                              : !theirs.empty() ? theirs.front()
                                                : base.front();
        if (rules_.isDecided(any.id)) return takeDecided(ours, theirs);
        if (sameList(base, &ColumnVersions::base, ours, &ColumnVersions::ours))
            return takeAll(theirs, &ColumnVersions::theirs);
        const bool onlyOurs =
            sameList(base, &ColumnVersions::base, theirs, &ColumnVersions::theirs);
        if (onlyOurs || sameList(ours, &ColumnVersions::ours, theirs, &ColumnVersions::theirs))
            return takeAll(ours, &ColumnVersions::ours);
        mergeChanged(base, ours, theirs);
    }

private:
    [[nodiscard]] const jet::Value& value(const KeyedRow* row, std::size_t column,
                                          Version version) const {
        return valueAt(row != nullptr ? row->row : nullptr, columns_[column].*version);
    }

    [[nodiscard]] bool sameList(List left, Version leftVersion, List right,
                                Version rightVersion) const {
        if (left.size() != right.size()) return false;
        for (std::size_t at = 0; at < left.size(); ++at)
            for (std::size_t column = 0; column < columns_.size(); ++column)
                if (!sameValue(value(&left[at], column, leftVersion),
                               value(&right[at], column, rightVersion)))
                    return false;
        return true;
    }

    void takeAll(List rows, Version version) {
        for (const KeyedRow& row : rows) {
            if (target_ && rules_.isLost(keyOf(value(&row, *target_, version)))) continue;
            Row taken{version == &ColumnVersions::ours ? row.row->id : jet::RowId{}, {}};
            for (std::size_t column = 0; column < columns_.size(); ++column)
                taken.values.push_back(value(&row, column, version));
            result_.merged[part_].rows.push_back(std::move(taken));
        }
    }

    void takeDecided(List ours, List theirs) {
        if (rules_.decides == Side::Ours)
            takeAll(ours, &ColumnVersions::ours);
        else
            takeAll(theirs, &ColumnVersions::theirs);
    }

    [[nodiscard]] std::vector<Key> targets(List rows, Version version) const {
        std::vector<Key> keys;
        for (const KeyedRow& row : rows)
            keys.push_back(target_ ? keyOf(value(&row, *target_, version)) : Key{});
        return keys;
    }

    [[nodiscard]] std::string listText(List rows, Version version) const {
        std::string all;
        for (const KeyedRow& row : rows)
            if (target_) all += (all.empty() ? "" : " ") + idText(value(&row, *target_, version));
        return all.empty() ? "none" : all;
    }

    [[nodiscard]] std::string ownerText(const KeyedRow& link, Version version) const {
        for (const Part part : ownersOf(part_))
            for (const Model* model : models_) {
                const Table& table = (*model)[part];
                const auto column = table.find(factsOf(part).id);
                const auto found = std::ranges::find_if(table.rows, [&](const Row& row) {
                    return keyOf(valueAt(&row, column)) == link.id;
                });
                if (found != table.rows.end()) return itemText(part, table, *found);
            }
        ItemChange change;
        change.part = part_;
        change.table = result_.merged[part_].name;
        const auto owner = result_.merged[part_].find(factsOf(part_).id);
        if (owner) change.id = value(&link, *owner, version);
        return itemText(change);
    }

    void addListConflict(const std::string& what, List base, List ours, List theirs) {
        const bool hasOurs = !ours.empty();
        const std::string owner = hasOurs ? ownerText(ours.front(), &ColumnVersions::ours)
                                          : ownerText(theirs.front(), &ColumnVersions::theirs);
        const std::string noun(factsOf(targetsOf(part_).front()).noun);
        result_.conflicts.push_back(
            {owner, what + " of " + noun + "s", listText(base, &ColumnVersions::base),
             listText(ours, &ColumnVersions::ours), listText(theirs, &ColumnVersions::theirs)});
    }

    /// Whether a link that one side removed says more on the other side than it did.
    [[nodiscard]] bool lostWords(const MergedList& list, List base, List ours, List theirs) const {
        return std::ranges::any_of(list.removed, [&](const MergedList::Entry& entry) {
            const Version version = entry.ours ? &ColumnVersions::ours : &ColumnVersions::theirs;
            const KeyedRow* left = entry.ours     ? &ours[*entry.ours]
                                   : entry.theirs ? &theirs[*entry.theirs]
                                                  : nullptr;
            return left != nullptr && std::ranges::any_of(others_, [&](std::size_t column) {
                       return !sameValue(value(&base[*entry.base], column, &ColumnVersions::base),
                                         value(left, column, version));
                   });
        });
    }

    void mergeChanged(List base, List ours, List theirs) {
        const MergedList list =
            mergeLists(targets(base, &ColumnVersions::base), targets(ours, &ColumnVersions::ours),
                       targets(theirs, &ColumnVersions::theirs), rules_.decides);
        if (lostWords(list, base, ours, theirs)) {
            addListConflict("links", base, ours, theirs);
            return takeDecided(ours, theirs);
        }
        if (list.orderConflict) addListConflict("order", base, ours, theirs);
        std::int64_t place = firstPlace(ours, theirs);
        for (const MergedList::Entry& entry : list.entries) {
            const KeyedRow* first = entry.ours ? &ours[*entry.ours] : nullptr;
            const KeyedRow* second = entry.theirs ? &theirs[*entry.theirs] : nullptr;
            const KeyedRow* origin = entry.base ? &base[*entry.base] : nullptr;
            if (addLink(origin, first, second, place)) ++place;
        }
    }

    [[nodiscard]] std::int64_t firstPlace(List ours, List theirs) const {
        std::optional<std::int64_t> first;
        const auto look = [&](List rows, Version version) {
            if (rows.empty() || !place_) return;
            const auto number = wholeNumber(value(&rows.front(), *place_, version));
            if (number && (!first || *number < *first)) first = number;
        };
        look(ours, &ColumnVersions::ours);
        look(theirs, &ColumnVersions::theirs);
        return first.value_or(1);
    }

    /// False where the link goes because what it leads to is gone.
    bool addLink(const KeyedRow* base, const KeyedRow* ours, const KeyedRow* theirs,
                 std::int64_t place) {
        const bool oneSide = ours == nullptr || theirs == nullptr;
        const KeyedRow* one = ours != nullptr ? ours : theirs;
        const Version version = ours != nullptr ? &ColumnVersions::ours : &ColumnVersions::theirs;
        if (target_ && rules_.isLost(keyOf(value(one, *target_, version)))) return false;
        Row row{ours != nullptr ? ours->row->id : jet::RowId{}, {}};
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            const bool isOther = std::ranges::find(others_, column) != others_.end();
            if (column == place_)
                row.values.emplace_back(static_cast<std::int32_t>(place));
            else if (isOther && !oneSide)
                row.values.push_back(mergedValue(base, *ours, *theirs, column));
            else
                row.values.push_back(value(one, column, version));
        }
        result_.merged[part_].rows.push_back(std::move(row));
        return true;
    }

    const jet::Value& mergedValue(const KeyedRow* base, const KeyedRow& ours,
                                  const KeyedRow& theirs, std::size_t column) {
        const ValueVersions values{value(base, column, &ColumnVersions::base),
                                   value(&ours, column, &ColumnVersions::ours),
                                   value(&theirs, column, &ColumnVersions::theirs)};
        const Decision decision = decide(values, base != nullptr, columns_[column], rules_.decides);
        if (decision.conflict)
            result_.conflicts.push_back(
                {ownerText(ours, &ColumnVersions::ours),
                 "link to " + std::string(factsOf(targetsOf(part_).front()).noun) + ' ' +
                     (target_ ? idText(value(&ours, *target_, &ColumnVersions::ours))
                              : std::string()) +
                     ", " + columns_[column].name,
                 valueText(values.base), valueText(values.ours), valueText(values.theirs)});
        return decision.takeTheirs ? values.theirs : values.ours;
    }

    Part part_;
    std::array<const Model*, 3> models_;  // in the order in which names are looked up
    const LinkRules& rules_;
    Merge& result_;
    std::vector<ColumnVersions> columns_;
    std::optional<std::size_t> target_, place_;
    std::vector<std::size_t> others_;  // columns besides owner, target and place
};

}  // namespace

void mergeLinks(Part part, const Model& base, const Model& ours, const Model& theirs,
                const LinkRules& rules, Merge& result) {
    const std::vector<KeyedRow> baseRows = keyedRows(part, base[part]);
    const std::vector<KeyedRow> oursRows = keyedRows(part, ours[part]);
    const std::vector<KeyedRow> theirsRows = keyedRows(part, theirs[part]);
    List first = baseRows, second = oursRows, third = theirsRows;
    LinkMerge lists(part, base, ours, theirs, rules, result);
    while (!first.empty() || !second.empty() || !third.empty()) {
        const Key* owner = nullptr;
        for (const List& rows : {first, second, third})
            if (!rows.empty() && (owner == nullptr || rows.front().id < *owner))
                owner = &rows.front().id;
        const Key key = *owner;
        const List a = takeOwner(first, key);
        const List b = takeOwner(second, key);
        const List c = takeOwner(third, key);
        lists.mergeOwner(a, b, c);
    }
}

}  // namespace stelvan::model
