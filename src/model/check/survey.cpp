#include "model/check/survey.h"

#include <algorithm>
#include <iterator>

#include "model/core/values.h"

namespace stelvan::model {

Survey::Survey(const Model& whole, const Progress& tellProgress)
    : model(whole),
      references(whole),
      held(holdings(model, references)),
      progress(tellProgress),
      catalogue_(gem::lInitErrInfo()) {}

void Survey::add(const Item& item, const Says& says) {
    const Table& table = *item.table;
    const auto column = table.find(says.column);
    found_[indexOf(item.part)].push_back(
        {says.severity, std::string(says.rule), table.name,
         table.value(*item.row, factsOf(item.part).id),
         isLinks(item.part) ? ownerName(item) : item.name(),
         column ? table.columns[*column] : std::string(says.column), says.text, says.mend,
         item.part, item.row->id});
}

void Survey::addAbsent(Part part, const jet::Value& id, std::string_view name, const Says& says) {
    const Table& table = model[part];
    const auto column = table.find(says.column);
    found_[indexOf(part)].push_back({says.severity,
                                     std::string(says.rule),
                                     table.present ? table.name : std::string(factsOf(part).table),
                                     id,
                                     std::string(name),
                                     column ? table.columns[*column] : std::string(says.column),
                                     says.text,
                                     says.mend,
                                     part,
                                     {}});
}

std::string Survey::ownerName(const Item& link) const {
    const Relation& owners =
        link.part == Part::EventReports ? references.events() : references.reports();
    const auto owner = CrossReference::first(owners, link.id());
    return owner ? owner->name() : std::string();
}

std::string Survey::called(const Item& item) {
    std::string text = std::string(factsOf(item.part).noun) + " " + item.idText();
    const std::string name = item.name();
    return name.empty() ? text : text + " (" + name + ")";
}

std::string Survey::messageOf(gem::ErrorCode code) const {
    return catalogue_.at(static_cast<std::size_t>(code)).message;
}

std::vector<Finding> Survey::take() {
    std::vector<Finding> all;
    for (std::vector<Finding>& findings : found_) {
        std::ranges::stable_sort(findings, [](const Finding& left, const Finding& right) {
            const auto order = compareValues(left.id, right.id);
            return std::is_eq(order) ? left.rule < right.rule : std::is_lt(order);
        });
        std::ranges::move(findings, std::back_inserter(all));
        findings.clear();
    }
    return all;
}

}  // namespace stelvan::model
