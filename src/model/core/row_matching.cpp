#include "model/core/row_matching.h"

#include <algorithm>
#include <compare>
#include <initializer_list>
#include <string_view>

#include "model/core/values.h"

namespace stelvan::model {
namespace {

using Columns = std::vector<std::size_t>;
using Positions = std::vector<std::size_t>;

std::weak_ordering compareIn(const Columns& columns, const Row& left, const Row& right) {
    for (const std::size_t column : columns) {
        const auto order = compareValues(left.values[column], right.values[column]);
        if (std::is_neq(order)) return order;
    }
    return std::weak_ordering::equivalent;
}

class Matching {
public:
    Matching(const Table& before, const Table& after)
        : before_(&before),
          after_(&after),
          partners_(after.rows.size()),
          taken_(before.rows.size(), false) {
        for (std::size_t column = 0; column < before.columns.size(); ++column)
            all_.push_back(column);
    }

    /// By where they were read.
    void byRowId() {
        const auto& rows = before_->rows;
        const auto idAt = [&](std::size_t at) { return rows[at].id; };
        Positions byId;
        for (std::size_t at = 0; at < after_->rows.size(); ++at) {
            const jet::RowId id = after_->rows[at].id;
            if (id == jet::RowId{}) continue;
            if (byId.empty()) {
                for (std::size_t row = 0; row < rows.size(); ++row) byId.push_back(row);
                std::ranges::sort(byId, {}, idAt);
            }
            const auto found = std::ranges::lower_bound(byId, id, {}, idAt);
            if (found != byId.end() && rows[*found].id == id && !taken_[*found]) pair(*found, at);
        }
    }

    /// Rows that are the same in these columns, the first with the first.
    void byColumns(const Columns& columns) {
        const Positions before =
            free(*before_, columns, [&](std::size_t at) { return taken_[at]; });
        const Positions after =
            free(*after_, columns, [&](std::size_t at) { return partners_[at].has_value(); });
        auto old = before.begin();
        for (auto wanted = after.begin(); wanted != after.end() && old != before.end();) {
            const auto order = compareIn(columns, before_->rows[*old], after_->rows[*wanted]);
            if (std::is_eq(order)) pair(*old, *wanted);
            const bool both = std::is_eq(order);
            if (both || std::is_lt(order)) ++old;
            if (both || std::is_gt(order)) ++wanted;
        }
    }

    [[nodiscard]] std::vector<std::optional<std::size_t>> partners() && {
        return std::move(partners_);
    }

private:
    void pair(std::size_t before, std::size_t after) {
        partners_[after] = before;
        taken_[before] = true;
    }

    /// The rows without a partner, ordered by these columns and then by all.
    template <typename HasPartner>
    [[nodiscard]] Positions free(const Table& table, const Columns& columns,
                                 HasPartner&& hasPartner) const {
        Positions positions;
        for (std::size_t at = 0; at < table.rows.size(); ++at)
            if (!hasPartner(at)) positions.push_back(at);
        const auto less = [&](std::size_t left, std::size_t right) {
            const auto order = compareIn(columns, table.rows[left], table.rows[right]);
            if (std::is_neq(order)) return std::is_lt(order);
            return std::is_lt(compareIn(all_, table.rows[left], table.rows[right]));
        };
        if (!std::ranges::is_sorted(positions, less)) std::ranges::stable_sort(positions, less);
        return positions;
    }

    const Table* before_;
    const Table* after_;
    std::vector<std::optional<std::size_t>> partners_;
    std::vector<bool> taken_;
    Columns all_;
};

Columns columnsOf(const Table& table, std::initializer_list<std::string_view> names) {
    Columns columns;
    for (const std::string_view name : names)
        if (const auto column = table.find(name); !name.empty() && column)
            columns.push_back(*column);
    return columns;
}

}  // namespace

std::vector<std::optional<std::size_t>> matchRows(Part part, const Table& before,
                                                  const Table& after) {
    const PartFacts& facts = factsOf(part);
    Matching matching(before, after);
    matching.byRowId();
    matching.byColumns(columnsOf(before, {facts.id, facts.target, facts.order}));
    if (isLinks(part)) matching.byColumns(columnsOf(before, {facts.id, facts.target}));
    return std::move(matching).partners();
}

}  // namespace stelvan::model
