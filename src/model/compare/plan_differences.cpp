#include "model/compare/plan_differences.h"

#include <cstdint>
#include <unordered_set>
#include <utility>

namespace stelvan::model {
namespace {

using Numbers = std::unordered_set<std::int64_t>;

/// The owners of links that change.
Numbers changedOwners(const WritePlan& plan, Part links) {
    Numbers owners;
    const auto note = [&](const Table& table, std::size_t row) {
        if (const auto owner = table.number(table.rows[row], factsOf(links).id))
            owners.insert(*owner);
    };
    for (const std::size_t row : plan[links].removed) note(plan.before[links], row);
    for (const std::size_t row : plan[links].added) note(plan.after[links], row);
    for (const WritePlan::Change& change : plan[links].changed) {
        note(plan.before[links], change.before);
        note(plan.after[links], change.after);
    }
    return owners;
}

/// Variables that a list names in which something changes: their names are told.
Numbers namedVariables(const WritePlan& plan) {
    constexpr Part kLinks = Part::ReportVariables;
    const Numbers owners = changedOwners(plan, kLinks);
    Numbers named;
    for (const Model* model : {&plan.before, &plan.after}) {
        const Table& table = (*model)[kLinks];
        for (const Row& row : table.rows) {
            const auto owner = table.number(row, factsOf(kLinks).id);
            const auto target = table.number(row, factsOf(kLinks).target);
            if (owner && target && owners.contains(*owner)) named.insert(*target);
        }
    }
    return named;
}

/// Keeps the rows that are marked, and those that are named or have no number to be named by.
void keep(Part part, Table& table, const std::vector<bool>& marked, const Numbers& named) {
    std::vector<Row> kept;
    for (std::size_t at = 0; at < table.rows.size(); ++at) {
        const auto id = table.number(table.rows[at], factsOf(part).id);
        if (marked[at] || !id || named.contains(*id)) kept.push_back(std::move(table.rows[at]));
    }
    table.rows = std::move(kept);
}

void letGoOfUnchanged(WritePlan& plan, Part part, const Numbers& named) {
    Table& before = plan.before[part];
    Table& after = plan.after[part];
    std::vector<bool> oldRows(before.rows.size(), false);
    std::vector<bool> newRows(after.rows.size(), false);
    for (const std::size_t row : plan[part].removed) oldRows[row] = true;
    for (const std::size_t row : plan[part].added) newRows[row] = true;
    for (const WritePlan::Change& change : plan[part].changed) {
        oldRows[change.before] = true;
        newRows[change.after] = true;
    }
    keep(part, before, oldRows, named);
    keep(part, after, newRows, named);
}

}  // namespace

void differences(WritePlan plan, const TakeChange& take) {
    const Numbers named = namedVariables(plan);
    for (const Part part : {Part::StandardVariables, Part::CustomVariables})
        letGoOfUnchanged(plan, part, named);
    sortRows(plan.after);
    differences(plan.before, plan.after, take);
}

}  // namespace stelvan::model
