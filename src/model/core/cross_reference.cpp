#include "model/core/cross_reference.h"

#include <algorithm>

#include "gem/schema.h"

namespace stelvan::model {
namespace {

namespace alarm = gem::schema::alarm;
namespace variable = gem::schema::variable;

/// Every row of a part under the number in one of its columns.
void addAll(Relation& relation, const Model& model, Part part, std::string_view column) {
    const Table& table = model[part];
    for (const Row& row : table.rows) relation.add(table.number(row, column), {part, &table, &row});
}

void addItems(Relation& relation, const Model& model, Part part) {
    addAll(relation, model, part, factsOf(part).id);
}

/// The custom variables that a list holds, by their place in it.
void addChildren(Relation& relation, const Model& model) {
    const Table& table = model[Part::CustomVariables];
    std::vector<const Row*> rows;
    for (const Row& row : table.rows)
        if (table.number(row, variable::kParentKey).value_or(0) != 0) rows.push_back(&row);
    std::ranges::stable_sort(rows, {}, [&](const Row* row) {
        return table.number(*row, variable::kAccessId).value_or(0);
    });
    for (const Row* row : rows)
        relation.add(table.number(*row, variable::kParentKey),
                     {Part::CustomVariables, &table, row});
}

}  // namespace

void Relation::add(std::optional<std::int64_t> key, const Item& item) {
    if (key) entries_.push_back({*key, item});
}

void Relation::finish() {
    if (!std::ranges::is_sorted(entries_, {}, &Entry::key))
        std::ranges::stable_sort(entries_, {}, &Entry::key);
}

std::span<const Relation::Entry> Relation::of(std::int64_t key) const {
    const auto found = std::ranges::equal_range(entries_, key, {}, &Entry::key);
    return {found.begin(), found.end()};
}

CrossReference::CrossReference(const Model& model) {
    addItems(variables_, model, Part::StandardVariables);
    addItems(variables_, model, Part::CustomVariables);
    addItems(events_, model, Part::StandardEvents);
    addItems(events_, model, Part::CustomEvents);
    addItems(reports_, model, Part::Reports);
    addItems(alarms_, model, Part::Alarms);
    addItems(reportsOfEvent_, model, Part::EventReports);
    addItems(variablesOfReport_, model, Part::ReportVariables);
    addAll(eventsOfReport_, model, Part::EventReports, factsOf(Part::EventReports).target);
    addAll(reportsOfVariable_, model, Part::ReportVariables, factsOf(Part::ReportVariables).target);
    addChildren(childrenOfList_, model);
    addAll(alarmsSetBy_, model, Part::Alarms, alarm::kSetEventId);
    addAll(alarmsClearedBy_, model, Part::Alarms, alarm::kClearEventId);
    addItems(limitsOfVariable_, model, Part::Limits);
    for (Relation* relation :
         {&variables_, &events_, &reports_, &alarms_, &reportsOfEvent_, &variablesOfReport_,
          &eventsOfReport_, &reportsOfVariable_, &childrenOfList_, &alarmsSetBy_, &alarmsClearedBy_,
          &limitsOfVariable_})
        relation->finish();
}

std::optional<Item> CrossReference::first(const Relation& relation,
                                          std::optional<std::int64_t> key) {
    if (!key) return std::nullopt;
    const auto found = relation.of(*key);
    return found.empty() ? std::nullopt : std::optional(found.front().item);
}

}  // namespace stelvan::model
