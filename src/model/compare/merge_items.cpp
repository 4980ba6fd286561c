#include "model/compare/merge_items.h"

#include "model/core/values.h"

namespace stelvan::model {
namespace {

/// The rows of one side by the row of the base that they come from, and those that it added.
struct Descendants {
    std::vector<const Row*> of;  // by position in the base
    std::vector<KeyedRow> added;
};

Descendants descendants(Part part, const Table& base, const Table& side) {
    Descendants found{std::vector<const Row*>(base.rows.size()), {}};
    for (const RowPair& pair : pairRows(part, base, side)) {
        if (pair.before != nullptr)
            found.of[static_cast<std::size_t>(pair.before - base.rows.data())] = pair.after;
        else
            found.added.push_back({pair.id, pair.place, pair.after});
    }
    return found;
}

}  // namespace

std::vector<ItemVersions> itemVersions(Part part, const Model& base, const Model& ours,
                                       const Model& theirs) {
    const Descendants left = descendants(part, base[part], ours[part]);
    const Descendants right = descendants(part, base[part], theirs[part]);
    std::vector<ItemVersions> items;
    for (const KeyedRow& row : keyedRows(part, base[part])) {
        const auto at = static_cast<std::size_t>(row.row - base[part].rows.data());
        items.push_back({row.id, row.place, row.row, left.of[at], right.of[at]});
    }
    for (const RowPair& pair : pairRows(part, ours[part], theirs[part], left.added, right.added))
        items.push_back({pair.id, pair.place, nullptr, pair.before, pair.after});
    return items;
}

std::vector<ColumnVersions> columnVersions(const Table& base, const Table& ours,
                                           const Table& theirs) {
    std::vector<ColumnVersions> columns;
    for (std::size_t at = 0; at < ours.columns.size(); ++at)
        columns.push_back(
            {ours.columns[at], base.find(ours.columns[at]), at, theirs.find(ours.columns[at])});
    for (std::size_t at = 0; at < theirs.columns.size(); ++at)
        if (!ours.find(theirs.columns[at]))
            columns.push_back({theirs.columns[at], base.find(theirs.columns[at]), {}, at});
    return columns;
}

Decision decide(const ValueVersions& values, bool known, const ColumnVersions& column,
                Side decides) {
    const auto& [base, ours, theirs] = values;
    if (sameValue(ours, theirs)) return {false, false};
    if (!known && !(column.ours && column.theirs)) return {false, !column.ours};
    if (known && sameValue(base, ours)) return {false, true};
    if (known && sameValue(base, theirs)) return {false, false};
    return {true, decides == Side::Theirs};
}

void addMissing(Part part, Table& version, const Table& base) {
    if (!base.present) return;
    if (!version.present) {
        version = base;
        version.present = false;
        for (Row& row : version.rows) row.id = {};
        return;
    }
    std::vector<std::size_t> missing;
    for (std::size_t at = 0; at < base.columns.size(); ++at)
        if (!version.find(base.columns[at])) missing.push_back(at);
    if (missing.empty()) return;
    const std::vector<RowPair> pairs = pairRows(part, base, version);
    std::vector<const Row*> origin(version.rows.size());
    for (const RowPair& pair : pairs)
        if (pair.after != nullptr)
            origin[static_cast<std::size_t>(pair.after - version.rows.data())] = pair.before;
    for (const std::size_t column : missing) {
        version.columns.push_back(base.columns[column]);
        for (std::size_t at = 0; at < version.rows.size(); ++at)
            version.rows[at].values.push_back(valueAt(origin[at], column));
    }
}

}  // namespace stelvan::model
