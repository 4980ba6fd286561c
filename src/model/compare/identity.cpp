#include "model/compare/identity.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "base/text.h"
#include "jet/rows/value_text.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

const jet::Value kNull;

bool isBefore(const KeyedRow& left, const KeyedRow& right) {
    return std::tie(left.id, left.place) < std::tie(right.id, right.place);
}

/// The rows from the first of `rows` on that are under one key.
std::span<const KeyedRow> firstGroup(std::span<const KeyedRow> rows) {
    const auto end = std::ranges::find_if_not(
        rows, [&](const KeyedRow& row) { return row.sameItem(rows.front()); });
    return rows.first(static_cast<std::size_t>(end - rows.begin()));
}

using Belongs = std::function<bool(const Row& before, const Row& after)>;

/// Pairs what is still alone, in order, with the first that belongs to it.
void pairWhere(std::vector<const Row*>& before, std::vector<const Row*>& after,
               std::vector<const Row*>& partners, const Belongs& belongs) {
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (partners[at] != nullptr) continue;
        const auto found =
            std::ranges::find_if(after, [&](const Row* row) { return belongs(*before[at], *row); });
        if (found == after.end()) continue;
        partners[at] = *found;
        after.erase(found);
    }
}

/// The rows of one key, several on either side.
class Doubles {
public:
    Doubles(Part part, const Table& before, const Table& after)
        : columns_(columnPairs(before, after)),
          beforeName_(before.find(factsOf(part).name)),
          afterName_(after.find(factsOf(part).name)) {}

    void pair(std::span<const KeyedRow> beforeRows, std::span<const KeyedRow> afterRows,
              std::vector<RowPair>& pairs) const {
        std::vector<const Row*> before = pointers(beforeRows);
        std::vector<const Row*> after = pointers(afterRows);
        std::vector<const Row*> partners(before.size());
        pairWhere(before, after, partners, [&](const Row& left, const Row& right) {
            return sameRow(columns_, left, right);
        });
        pairWhere(before, after, partners, [&](const Row& left, const Row& right) {
            const jet::Value& name = valueAt(&left, beforeName_);
            return !jet::isNull(name) && sameValue(name, valueAt(&right, afterName_));
        });
        pairWhere(before, after, partners, [](const Row&, const Row&) { return true; });
        const KeyedRow& key = beforeRows.empty() ? afterRows.front() : beforeRows.front();
        for (std::size_t at = 0; at < before.size(); ++at)
            pairs.push_back({key.id, key.place, before[at], partners[at]});
        for (const Row* row : after) pairs.push_back({key.id, key.place, nullptr, row});
    }

private:
    static std::vector<const Row*> pointers(std::span<const KeyedRow> rows) {
        std::vector<const Row*> pointers;
        for (const KeyedRow& row : rows) pointers.push_back(row.row);
        return pointers;
    }

    std::vector<ColumnPair> columns_;
    std::optional<std::size_t> beforeName_, afterName_;
};

}  // namespace

Key keyOf(const jet::Value& value) {
    if (jet::isNull(value)) return {};
    if (const auto number = wholeNumber(value)) return {Key::Kind::Number, *number, {}};
    return {Key::Kind::Text, 0, jet::textOf(value)};
}

std::vector<KeyedRow> keyedRows(Part part, const Table& table) {
    const auto id = table.find(factsOf(part).id);
    const auto place = part == Part::Limits ? table.find(factsOf(part).order) : std::nullopt;
    std::vector<KeyedRow> rows;
    rows.reserve(table.rows.size());
    for (const Row& row : table.rows)
        rows.push_back({keyOf(valueAt(&row, id)), keyOf(valueAt(&row, place)), &row});
    if (!std::ranges::is_sorted(rows, isBefore)) std::ranges::stable_sort(rows, isBefore);
    return rows;
}

std::span<const KeyedRow> takeOwner(std::span<const KeyedRow>& rows, const Key& owner) {
    const auto end =
        std::ranges::find_if(rows, [&](const KeyedRow& row) { return row.id != owner; });
    const auto taken = rows.first(static_cast<std::size_t>(end - rows.begin()));
    rows = rows.subspan(taken.size());
    return taken;
}

std::vector<ColumnPair> columnPairs(const Table& before, const Table& after) {
    std::vector<ColumnPair> pairs;
    for (std::size_t at = 0; at < before.columns.size(); ++at) {
        const auto other = after.find(before.columns[at]);
        pairs.push_back({other ? after.columns[*other] : before.columns[at], at, other});
    }
    for (std::size_t at = 0; at < after.columns.size(); ++at)
        if (!before.find(after.columns[at])) pairs.push_back({after.columns[at], {}, at});
    return pairs;
}

const jet::Value& valueAt(const Row* row, std::optional<std::size_t> column) {
    return row != nullptr && column ? row->values[*column] : kNull;
}

bool sameRow(std::span<const ColumnPair> columns, const Row& before, const Row& after) {
    return std::ranges::all_of(columns, [&](const ColumnPair& column) {
        return sameValue(valueAt(&before, column.before), valueAt(&after, column.after));
    });
}

std::vector<RowPair> pairRows(Part part, const Table& before, const Table& after,
                              std::span<const KeyedRow> beforeRows,
                              std::span<const KeyedRow> afterRows) {
    const Doubles doubles(part, before, after);
    std::vector<RowPair> pairs;
    pairs.reserve(std::max(beforeRows.size(), afterRows.size()));
    while (!beforeRows.empty() || !afterRows.empty()) {
        std::span<const KeyedRow> left, right;
        if (!beforeRows.empty()) left = firstGroup(beforeRows);
        if (!afterRows.empty()) right = firstGroup(afterRows);
        if (!left.empty() && !right.empty() && !left.front().sameItem(right.front())) {
            if (isBefore(left.front(), right.front()))
                right = {};
            else
                left = {};
        }
        if (left.size() == 1 && right.size() == 1)
            pairs.push_back(
                {left.front().id, left.front().place, left.front().row, right.front().row});
        else
            doubles.pair(left, right, pairs);
        beforeRows = beforeRows.subspan(left.size());
        afterRows = afterRows.subspan(right.size());
    }
    return pairs;
}

std::vector<RowPair> pairRows(Part part, const Table& before, const Table& after) {
    return pairRows(part, before, after, keyedRows(part, before), keyedRows(part, after));
}

}  // namespace stelvan::model
