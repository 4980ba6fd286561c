#include "model/compare/differences.h"

#include <algorithm>
#include <array>

#include "model/compare/alignment.h"
#include "model/compare/identity.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

std::vector<FieldChange> fieldChanges(std::span<const ColumnPair> columns, const Row* before,
                                      const Row* after) {
    std::vector<FieldChange> changes;
    for (const ColumnPair& column : columns) {
        const jet::Value& old = valueAt(before, column.before);
        const jet::Value& now = valueAt(after, column.after);
        if (!sameValue(old, now)) changes.push_back({column.name, old, now});
    }
    return changes;
}

/// As the second side spells it, if it has the table.
const std::string& tableName(const Table& before, const Table& after) {
    return after.present ? after.name : before.name;
}

/// An item and what became of its links.
struct ItemState {
    RowPair rows;
    std::vector<LinkChange> links;
};

/// All items of one part.
class PartState {
public:
    PartState() = default;
    PartState(Part part, const Table& before, const Table& after)
        : part_(part), before_(&before), after_(&after), columns_(columnPairs(before, after)) {
        for (RowPair& pair : pairRows(part, before, after)) items_.push_back({std::move(pair), {}});
    }

    /// The first item with an identifier; that of the second side, where there is a choice.
    [[nodiscard]] ItemState* find(const Key& id) {
        const auto same = std::ranges::equal_range(items_, id, {}, idOf);
        const auto isThere = [](const ItemState& item) { return item.rows.after != nullptr; };
        const auto found = std::ranges::find_if(same, isThere);
        if (found != same.end()) return &*found;
        return same.empty() ? nullptr : &same.front();
    }

    [[nodiscard]] std::string nameOf(const RowPair& rows) const {
        const std::string_view column = factsOf(part_).name;
        return rows.after != nullptr ? after_->text(*rows.after, column)
                                     : before_->text(*rows.before, column);
    }

    /// Adds the changes of all items, and takes those of their links.
    void report(const TakeChange& take) {
        for (ItemState& item : items_) {
            const auto& [id, place, before, after] = item.rows;
            std::vector<FieldChange> fields = fieldChanges(columns_, before, after);
            const bool kept = before != nullptr && after != nullptr;
            if (kept && fields.empty() && item.links.empty()) continue;
            const Change change = kept               ? Change::Changed
                                  : after != nullptr ? Change::Added
                                                     : Change::Removed;
            const bool isLimit = part_ == Part::Limits;
            take({change, part_, value(item.rows, factsOf(part_).id),
                  isLimit ? value(item.rows, factsOf(part_).order) : jet::Value(),
                  nameOf(item.rows), std::move(fields), std::move(item.links),
                  tableName(*before_, *after_)});
        }
    }

private:
    static const Key& idOf(const ItemState& item) { return item.rows.id; }

    [[nodiscard]] jet::Value value(const RowPair& rows, std::string_view column) const {
        return rows.after != nullptr ? after_->value(*rows.after, column)
                                     : before_->value(*rows.before, column);
    }

    Part part_ = Part::StandardVariables;
    const Table* before_ = nullptr;
    const Table* after_ = nullptr;
    std::vector<ColumnPair> columns_;
    std::vector<ItemState> items_;
};

using PartStates = std::array<PartState, kParts>;

/// The first item with an identifier in one of several parts.
std::pair<PartState*, ItemState*> find(PartStates& states, std::span<const Part> where,
                                       const Key& id) {
    if (id.kind != Key::Kind::Null)
        for (const Part part : where)
            if (ItemState* item = states[indexOf(part)].find(id))
                return {&states[indexOf(part)], item};
    return {};
}

/// The links of one part, owner by owner.
class LinkLists {
public:
    LinkLists(Part part, const Model& before, const Model& after, PartStates& states)
        : part_(part),
          states_(states),
          before_(before[part]),
          after_(after[part]),
          beforeRows_(keyedRows(part, before_)),
          afterRows_(keyedRows(part, after_)) {
        const PartFacts& facts = factsOf(part);
        for (const ColumnPair& column : columnPairs(before_, after_)) {
            const auto isColumn = [&](std::string_view name) {
                return column.before == before_.find(name) && column.after == after_.find(name);
            };
            if (isColumn(facts.target))
                target_ = column;
            else if (isColumn(facts.order))
                place_ = column;
            else if (!isColumn(facts.id))
                others_.push_back(column);
        }
    }

    /// Gives the changes of each list to its owner; those of lists without one to `changes`.
    void compare(std::vector<ItemChange>& changes) {
        std::span<const KeyedRow> left = beforeRows_;
        std::span<const KeyedRow> right = afterRows_;
        while (!left.empty() || !right.empty()) {
            const bool second =
                left.empty() || (!right.empty() && right.front().id < left.front().id);
            const Key owner = second ? right.front().id : left.front().id;
            const std::span<const KeyedRow> before = takeOwner(left, owner);
            const std::span<const KeyedRow> after = takeOwner(right, owner);
            std::vector<LinkChange> links = compareList(before, after);
            if (links.empty()) continue;
            if (ItemState* item = find(states_, ownersOf(part_), owner).second) {
                item->links = std::move(links);
                continue;
            }
            const jet::Value& id = after.empty()
                                       ? before_.value(*before.front().row, factsOf(part_).id)
                                       : after_.value(*after.front().row, factsOf(part_).id);
            changes.push_back({Change::Changed,
                               part_,
                               id,
                               {},
                               {},
                               {},
                               std::move(links),
                               tableName(before_, after_)});
        }
    }

private:
    using List = std::span<const KeyedRow>;

    static std::vector<Key> targets(List rows, std::optional<std::size_t> column) {
        std::vector<Key> keys;
        for (const KeyedRow& row : rows) keys.push_back(keyOf(valueAt(row.row, column)));
        return keys;
    }

    [[nodiscard]] LinkChange change(LinkChange::Kind kind, const Row* before,
                                    const Row* after) const {
        const jet::Value& target =
            after != nullptr ? valueAt(after, target_.after) : valueAt(before, target_.before);
        const auto [part, item] = find(states_, targetsOf(part_), keyOf(target));
        return {kind,
                part_,
                target,
                item != nullptr ? part->nameOf(item->rows) : std::string(),
                valueAt(before, place_.before),
                valueAt(after, place_.after),
                fieldChanges(others_, before, after)};
    }

    /// Whether the place of a link that kept its order is what it was, or only followed: its
    /// number went up or down as its rank in the list did.
    [[nodiscard]] bool placeFollows(const Row* before, std::size_t oldRank, const Row* after,
                                    std::size_t newRank) const {
        const jet::Value& old = valueAt(before, place_.before);
        const jet::Value& now = valueAt(after, place_.after);
        if (sameValue(old, now)) return true;
        const auto from = wholeNumber(old);
        const auto to = wholeNumber(now);
        return from && to &&
               *to - *from ==
                   static_cast<std::int64_t>(newRank) - static_cast<std::int64_t>(oldRank);
    }

    [[nodiscard]] std::vector<LinkChange> compareList(List before, List after) const {
        using enum LinkChange::Kind;
        const Alignment alignment =
            align(targets(before, target_.before), targets(after, target_.after));
        std::vector<LinkChange> changes;
        std::vector<std::pair<std::size_t, LinkChange>> inNewOrder;
        for (std::size_t at = 0; at < before.size(); ++at) {
            const auto& partner = alignment.partners[at];
            const Row* row = before[at].row;
            if (!partner) {
                changes.push_back(change(Removed, row, nullptr));
                continue;
            }
            const Row* now = after[partner->after].row;
            const bool stays = partner->kept && placeFollows(row, at, now, partner->after);
            if (stays && sameRow(others_, *row, *now)) continue;
            inNewOrder.emplace_back(partner->after, change(stays ? Changed : Reordered, row, now));
        }
        for (std::size_t at = 0; at < after.size(); ++at)
            if (alignment.isNew[at])
                inNewOrder.emplace_back(at, change(Added, nullptr, after[at].row));
        std::ranges::sort(inNewOrder, {}, [](const auto& entry) { return entry.first; });
        for (auto& [at, link] : inNewOrder) changes.push_back(std::move(link));
        return changes;
    }

    Part part_;
    PartStates& states_;
    const Table& before_;
    const Table& after_;
    std::vector<KeyedRow> beforeRows_, afterRows_;
    ColumnPair target_, place_;
    std::vector<ColumnPair> others_;  // besides owner, target and place
};

}  // namespace

void differences(const Model& before, const Model& after, const TakeChange& take) {
    PartStates states;
    for (const PartFacts& facts : parts())
        if (!isLinks(facts.part))
            states[indexOf(facts.part)] = {facts.part, before[facts.part], after[facts.part]};
    std::vector<ItemChange> ownerless;
    for (const Part part : {Part::EventReports, Part::ReportVariables})
        LinkLists(part, before, after, states).compare(ownerless);
    for (PartState& state : states) state.report(take);
    for (ItemChange& change : ownerless) take(std::move(change));
}

std::vector<ItemChange> differences(const Model& before, const Model& after) {
    std::vector<ItemChange> changes;
    differences(before, after, [&](ItemChange&& change) { changes.push_back(std::move(change)); });
    return changes;
}

}  // namespace stelvan::model
