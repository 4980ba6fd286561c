#include "model/check/links.h"

#include <set>
#include <tuple>

#include "gem/schema.h"
#include "jet/rows/value_text.h"
#include "model/check/survey.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

/// What the two columns of a link part lead to.
struct EndFacts {
    std::string_view rule;  // where it does not exist
    std::string_view noun;
};
constexpr EndFacts kEvent{"dangling-event", "event"};
constexpr EndFacts kReport{"dangling-report", "report"};
constexpr EndFacts kVariable{"dangling-variable", "variable"};

void reportDangling(Survey& survey, const Item& link, const EndFacts& end,
                    std::string_view column) {
    const std::string id = link.text(column);
    survey.add(link, {Severity::Error, end.rule, column,
                      id.empty() ? "The link names no " + std::string(end.noun) + "."
                                 : "There is no " + std::string(end.noun) + " " + id + ".",
                      "Remove the link (check --fix), or add the " + std::string(end.noun) + "."});
}

std::string ordersOf(std::span<const Item> items, std::string_view column) {
    constexpr std::size_t kShown = 12;
    std::string text;
    for (std::size_t at = 0; at < items.size() && at < kShown; ++at) {
        const std::string order = items[at].text(column);
        text += (at > 0 ? ", " : "") + (order.empty() ? "Null" : order);
    }
    return items.size() > kShown ? text + ", ..." : text;
}

void checkPart(Survey& survey, Part part) {
    const PartFacts& facts = factsOf(part);
    if (!survey.model[part].present) return;
    tell(survey.progress, "checking links", 0, survey.model[part].rows.size());
    const LinkView view(survey.model, survey.references, part);
    const bool ofEvents = part == Part::EventReports;
    for (const Item& link : view.all()) {
        const LinkEnds ends = view.endsOf(link);
        if (!ends.owner) reportDangling(survey, link, ofEvents ? kEvent : kReport, facts.id);
        if (!ends.target)
            reportDangling(survey, link, ofEvents ? kReport : kVariable, facts.target);
    }
    for (const OwnersLinks& links : view.byOwner()) {
        for (const Item& link : links.doubled)
            survey.add(link, {Severity::Warning, "duplicate-link", facts.target,
                              "The same link stands there already: " + link.text(facts.target) +
                                  " at place " + link.text(facts.order) + ".",
                              "Remove one of the two (check --fix)."});
        if (countsFromOne(links.kept, facts.order)) continue;
        survey.add(links.kept.front(),
                   {Severity::Warning, "order-gap", facts.order,
                    "The places are " + ordersOf(links.kept, facts.order) + " instead of 1 to " +
                        std::to_string(links.kept.size()) + ".",
                    "Number the links anew (check --fix)."});
    }
}

}  // namespace

LinkView::LinkView(const Model& model, const CrossReference& references, Part part)
    : part_(part),
      table_(model[part]),
      owners_(part == Part::EventReports ? references.events() : references.reports()),
      targets_(part == Part::EventReports ? references.reports() : references.variables()),
      links_(part == Part::EventReports ? references.reportsOfEvent()
                                        : references.variablesOfReport()) {}

LinkEnds LinkView::endsOf(const Item& link) const {
    return {CrossReference::first(owners_, link.id()).has_value(),
            CrossReference::first(targets_, link.number(factsOf(part_).target)).has_value()};
}

std::vector<OwnersLinks> LinkView::byOwner() const {
    const PartFacts& facts = factsOf(part_);
    std::vector<OwnersLinks> owners;
    std::set<std::tuple<std::string, std::string>> seen;
    for (const Relation::Entry& entry : links_.all()) {
        if (owners.empty() || owners.back().owner != entry.key) {
            if (owners_.of(entry.key).empty()) continue;
            owners.push_back({entry.key, {}, {}});
            seen.clear();
        }
        const bool isNew =
            seen.emplace(entry.item.text(facts.target), entry.item.text(facts.order)).second;
        (isNew ? owners.back().kept : owners.back().doubled).push_back(entry.item);
    }
    return owners;
}

std::vector<Item> LinkView::all() const {
    std::vector<Item> links;
    for (const Row& row : table_.rows) links.push_back({part_, &table_, &row});
    return links;
}

bool countsFromOne(std::span<const Item> items, std::string_view column) {
    std::int64_t place = 0;
    for (const Item& item : items)
        if (item.number(column) != ++place) return false;
    return true;
}

void checkLinks(Survey& survey) {
    checkPart(survey, Part::EventReports);
    checkPart(survey, Part::ReportVariables);
}

}  // namespace stelvan::model
