#include "sql/access_plan.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "sql/sqlite_values.h"

namespace stelvan::sql {

namespace {

constexpr int kPlaceColumn = -1;  // SQLite's number for the row id
constexpr double kLookupCost = 5;
constexpr double kRowCost = 2;
// How many rows share a key of an index that is not unique, until statistics say better.
constexpr double kRowsPerKey = 10;

/// Constraints by the column they are on.
class Constraints {
public:
    explicit Constraints(sqlite3_index_info& request) : request_(request) {}

    /// The first usable "column = value" on a column. IN lists are left to a scan, which keeps the
    /// stored order of the rows.
    [[nodiscard]] std::optional<int> equalityOn(int column) const {
        for (int at = 0; at < request_.nConstraint; ++at) {
            const auto& constraint = request_.aConstraint[at];
            if (constraint.iColumn == column && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
                constraint.usable != 0 && sqlite3_vtab_in(&request_, at, -1) == 0) {
                return at;
            }
        }
        return std::nullopt;
    }

private:
    sqlite3_index_info& request_;
};

/// The constraints that give an index's columns from the left.
std::vector<int> keyConstraints(const jet::TableInfo& table, const jet::IndexInfo& index,
                                const Constraints& constraints) {
    std::vector<int> key;
    for (const jet::IndexColumn& part : index.columns) {
        if (!hasExactKeys(table.columns[part.column])) return {};
    }
    for (const jet::IndexColumn& part : index.columns) {
        const std::optional<int> constraint = constraints.equalityOn(static_cast<int>(part.column));
        if (!constraint) break;
        key.push_back(*constraint);
    }
    return key;
}

jet::ColumnSet wantedColumns(const jet::TableInfo& table, sqlite3_uint64 used) {
    constexpr std::size_t kLastBit = 63;  // stands for all columns from there on
    jet::ColumnSet wanted;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        if ((used >> std::min(column, kLastBit) & 1U) != 0) wanted.push_back(column);
    }
    return wanted;
}

void passToFilter(sqlite3_index_info& request, const std::vector<int>& constraints) {
    int argument = 0;
    for (const int at : constraints) request.aConstraintUsage[at].argvIndex = ++argument;
}

void setEstimate(sqlite3_index_info& request, double rows, double cost) {
    request.estimatedRows = static_cast<sqlite3_int64>(std::max(rows, 1.0));
    request.estimatedCost = cost;
}

}  // namespace

AccessPlan chooseAccess(const jet::TableInfo& table, sqlite3_index_info& request) {
    const Constraints constraints(request);
    AccessPlan plan;
    plan.wanted = wantedColumns(table, request.colUsed);
    if (const std::optional<int> place = constraints.equalityOn(kPlaceColumn)) {
        plan.way = AccessPlan::Way::Place;
        passToFilter(request, {*place});
        setEstimate(request, 1, kRowCost);
        return plan;
    }
    double rows = table.rows;
    std::vector<int> bestKey;
    for (std::size_t at = 0; at < table.indexes.size(); ++at) {
        const jet::IndexInfo& index = table.indexes[at];
        std::vector<int> key = keyConstraints(table, index, constraints);
        if (key.empty()) continue;
        const bool whole = key.size() == index.columns.size();
        const double found = whole && index.unique ? 1 : kRowsPerKey;
        if (!bestKey.empty() && (found > rows || (found == rows && key.size() <= bestKey.size())))
            continue;
        rows = found;
        bestKey = std::move(key);
        plan.way = AccessPlan::Way::Index;
        plan.index = at;
        plan.keyColumns = bestKey.size();
        plan.wholeKey = whole;
    }
    passToFilter(request, bestKey);
    setEstimate(request, rows, kLookupCost + kRowCost * rows);
    return plan;
}

}  // namespace stelvan::sql
