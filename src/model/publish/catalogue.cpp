#include "model/publish/catalogue.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "model/core/refusal.h"
#include "model/publish/shown.h"

namespace stelvan::model {
namespace {

constexpr std::int64_t kHighestId = std::numeric_limits<std::uint32_t>::max();

void requireTables(const Model& model) {
    std::string missing;
    for (const PartFacts& facts : parts()) {
        if (facts.table.empty() || model[facts.part].present) continue;
        missing += (missing.empty() ? "" : ", ") + std::string(facts.table);
    }
    if (!missing.empty()) throw Refusal("this is no GEM model; it lacks " + missing);
}

/// What cannot be told apart by a number is not in the relation, so it is looked for in the tables.
void noteNumberless(const Model& model, Notes& notes) {
    for (const PartFacts& facts : parts()) {
        if (facts.kind == gem::Kind::ProtocolSettings || facts.kind == gem::Kind::Limit) continue;
        const Table& table = model[facts.part];
        for (const Row& row : table.rows)
            if (const Item item{facts.part, &table, &row}; !item.id())
                notes.add(item, "left out, since it has no whole number as identifier");
    }
}

/// The first item of each identifier.
std::vector<Item> firstOfEach(const Relation& relation, Notes& notes) {
    std::vector<Item> items;
    for (const auto& [id, item] : relation.all()) {
        if (id < 0 || id > kHighestId) {
            notes.add(item, "left out, since its identifier does not fit 32 bits without a sign");
        } else if (!items.empty() && items.back().id() == id) {
            notes.add(item, "left out, since another one has that identifier");
        } else {
            items.push_back(item);
        }
    }
    return items;
}

/// Those that are variables of SECS: status variables, data variables, equipment constants.
std::vector<Item> typed(std::vector<Item> variables, Notes& notes) {
    std::erase_if(variables, [&](const Item& variable) {
        const bool known = !typeOf(variable).empty();
        if (!known) notes.add(variable, "left out, since its type is none of SV, DV and EC");
        return !known;
    });
    return variables;
}

const Item& itemOf(const Item& item) {
    return item;
}
const Item& itemOf(const Catalogue::Report& report) {
    return report.item;
}
const Item& itemOf(const Catalogue::Event& event) {
    return event.item;
}

template <typename Entry>
const Entry* find(const std::vector<Entry>& entries, std::optional<std::int64_t> id) {
    const auto idOf = [](const Entry& entry) { return *itemOf(entry).id(); };
    if (!id) return nullptr;
    const auto found = std::ranges::lower_bound(entries, *id, {}, idOf);
    return found != entries.end() && idOf(*found) == *id ? &*found : nullptr;
}

/// The link rows of an owner. Where one row stands twice, with the same place, it counts once.
std::vector<Item> linksOf(const Relation& relation, const Item& owner) {
    std::vector<Item> links;
    const auto same = [](const Item& left, const Item& right) {
        const PartFacts& facts = factsOf(left.part);
        return left.number(facts.target) == right.number(facts.target) &&
               left.text(facts.order) == right.text(facts.order);
    };
    for (const auto& [id, link] : relation.of(*owner.id()))
        if (links.empty() || !same(links.back(), link)) links.push_back(link);
    return links;
}

std::string targetText(const Item& link) {
    return link.text(factsOf(link.part).target);
}

std::optional<std::int64_t> targetOf(const Item& link) {
    return link.number(factsOf(link.part).target);
}

std::string leftOut(const Item& link, const Relation& targets) {
    const bool known = CrossReference::first(targets, targetOf(link)).has_value();
    return targetText(link) + " left out, since " + (known ? "it is" : "there is none");
}

void addReports(Catalogue& catalogue, const CrossReference& references, Notes& notes) {
    for (const Item& item : firstOfEach(references.reports(), notes)) {
        Catalogue::Report report{item, {}};
        for (const Item& link : linksOf(references.variablesOfReport(), item)) {
            if (const Item* variable = catalogue.findVariable(targetOf(link)))
                report.variables.push_back(*variable);
            else
                notes.add(item, "variable " + leftOut(link, references.variables()));
        }
        if (report.variables.empty())
            notes.add(item, "left out, since it carries no variable");
        else
            catalogue.reports.push_back(std::move(report));
    }
}

void addEvents(Catalogue& catalogue, const CrossReference& references, Notes& notes) {
    for (const Item& item : firstOfEach(references.events(), notes)) {
        Catalogue::Event event{item, {}};
        for (const Item& link : linksOf(references.reportsOfEvent(), item)) {
            if (const Catalogue::Report* report = find(catalogue.reports, targetOf(link))) {
                event.reports.push_back(report);
            } else {
                notes.add(item, "report " + leftOut(link, references.reports()));
            }
        }
        catalogue.events.push_back(std::move(event));
    }
}

/// Link rows whose owner is not there are in no list of an owner.
void noteOwnerless(const Relation& links, const Relation& owners, Notes& notes) {
    for (const auto& [owner, link] : links.all())
        if (owners.of(owner).empty())
            notes.add(link, "left out, since there is none that " + targetText(link) +
                                " could belong to");
}

}  // namespace

void Notes::add(const Item& item, std::string_view text) {
    std::string line(factsOf(item.part).noun);
    if (const std::string id = item.idText(); !id.empty()) line += " " + id;
    if (const std::string name = item.name(); !base::isBlank(name)) line += " (" + name + ")";
    add(line + ": " + std::string(text));
}

void Notes::add(const std::string& line) {
    if (known_.insert(line).second) lines_.push_back(line);
}

const Item* Catalogue::findVariable(std::optional<std::int64_t> id) const {
    return find(variables, id);
}

const Catalogue::Event* Catalogue::findEvent(std::optional<std::int64_t> id) const {
    return find(events, id);
}

Catalogue catalogueOf(const Model& model, const CrossReference& references, Notes& notes) {
    requireTables(model);
    noteNumberless(model, notes);
    Catalogue catalogue;
    catalogue.variables = typed(firstOfEach(references.variables(), notes), notes);
    addReports(catalogue, references, notes);
    addEvents(catalogue, references, notes);
    catalogue.alarms = firstOfEach(references.alarms(), notes);
    noteOwnerless(references.variablesOfReport(), references.reports(), notes);
    noteOwnerless(references.reportsOfEvent(), references.events(), notes);
    return catalogue;
}

}  // namespace stelvan::model
