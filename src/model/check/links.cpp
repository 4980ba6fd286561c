#include "model/check/links.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "gem/schema.h"
#include "jet/rows/value_text.h"
#include "model/check/survey.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

/// Owner and target of event-report links, then of report-variable links.
constexpr std::array<LinkEnd, 2> kEventEnds = {{
    {"dangling-event", "event", gem::schema::event_report::kEventId},
    {"dangling-report", "report", gem::schema::event_report::kReportId},
}};
constexpr std::array<LinkEnd, 2> kReportEnds = {{
    {"dangling-report", "report", gem::schema::report_variable::kReportId},
    {"dangling-variable", "variable", gem::schema::report_variable::kVariableId},
}};

void reportDangling(Survey& survey, const Item& link, const LinkEnd& end) {
    const std::string id = link.text(end.column);
    const std::string noun(end.noun);
    survey.add(link, {Severity::Error, end.rule, end.column,
                      id.empty() ? "The link names no " + noun + " (Null)."
                                 : "There is no " + noun + " " + id + ".",
                      "Remove the link (check --fix), or add the " + noun + "."});
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
    for (const Item& link : view.all())
        for (const LinkEnd& end : view.missingEnds(link)) reportDangling(survey, link, end);
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

bool canFollow(const Model& model) {
    return std::ranges::all_of(parts(), [&](const PartFacts& facts) {
        const bool leads = isLinks(facts.part) || facts.kind == gem::Kind::Variable ||
                           facts.kind == gem::Kind::CollectionEvent ||
                           facts.kind == gem::Kind::Report;
        const Table& table = model[facts.part];
        const auto has = [&](std::string_view column) {
            return column.empty() || table.find(column).has_value();
        };
        return !leads || (table.present && has(facts.id) && has(facts.target) && has(facts.order));
    });
}

LinkView::LinkView(const Model& model, const CrossReference& references, Part part)
    : part_(part),
      table_(model[part]),
      owners_(part == Part::EventReports ? references.events() : references.reports()),
      targets_(part == Part::EventReports ? references.reports() : references.variables()),
      links_(part == Part::EventReports ? references.reportsOfEvent()
                                        : references.variablesOfReport()) {}

std::optional<Item> LinkView::ownerOf(const Item& link) const {
    return CrossReference::first(owners_, link.id());
}

std::vector<LinkEnd> LinkView::missingEnds(const Item& link) const {
    const auto& [owner, target] = part_ == Part::EventReports ? kEventEnds : kReportEnds;
    std::vector<LinkEnd> missing;
    if (!ownerOf(link)) missing.push_back(owner);
    if (!CrossReference::first(targets_, link.number(target.column))) missing.push_back(target);
    return missing;
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
