// Identifiers and names that several items have, and identifiers that belong to the standard.
#include <algorithm>
#include <set>

#include "base/text.h"
#include "gem/ids_and_names.h"
#include "jet/index/collation.h"
#include "model/check/standard_items.h"
#include "model/check/survey.h"

namespace stelvan::model {
namespace {

constexpr gem::Kind kKinds[] = {gem::Kind::Variable, gem::Kind::CollectionEvent, gem::Kind::Alarm,
                                gem::Kind::Report};

/// The items of the tables in which the editor looks for a double.
std::vector<Item> itemsIn(const Survey& survey, std::span<const gem::SearchedColumn> searched) {
    std::vector<Item> items;
    for (const PartFacts& facts : parts()) {
        const bool meant = std::ranges::any_of(
            searched, [&](const gem::SearchedColumn& one) { return facts.table == one.table; });
        if (!meant) continue;
        const Table& table = survey.model[facts.part];
        for (const Row& row : table.rows) items.push_back({facts.part, &table, &row});
    }
    return items;
}

/// The first of the group that is not `item`.
const Item& otherThan(const Item& item, std::span<const Item> group) {
    return group.front().row == item.row ? group.back() : group.front();
}

/// Each item of a group is named, since any of them may be the one to change; those of the standard
/// cannot be changed, and are named only where there are no others.
void reportGroup(Survey& survey, std::span<const Item> group, std::string_view rule,
                 std::string_view what) {
    const bool anyCustom =
        std::ranges::any_of(group, [](const Item& item) { return factsOf(item.part).custom; });
    for (const Item& item : group) {
        const PartFacts& facts = factsOf(item.part);
        if (anyCustom && !facts.custom) continue;
        const bool ids = rule == "duplicate-id";
        survey.add(item, {Severity::Error, rule, ids ? facts.id : facts.name,
                          "The " + std::string(what) + " is also that of " +
                              Survey::called(otherThan(item, group)) + ".",
                          "Give one of them another " + std::string(what) + "."});
    }
}

/// Calls `report` for every run of two or more that are equal.
template <class Entry, class Same, class Report>
void forGroups(const std::vector<Entry>& entries, const Same& same, const Report& report) {
    for (std::size_t first = 0; first < entries.size();) {
        std::size_t end = first + 1;
        while (end < entries.size() && same(entries[first], entries[end])) ++end;
        if (end - first > 1) report(first, end);
        first = end;
    }
}

void checkIds(Survey& survey, gem::Kind kind) {
    struct Entry {
        std::int64_t id;
        Item item;
    };
    std::vector<Entry> entries;
    for (const Item& item : itemsIn(survey, gem::rulesOf(kind).ids))
        if (const auto id = item.id()) entries.push_back({*id, item});
    std::ranges::stable_sort(entries, {}, &Entry::id);
    forGroups(
        entries, [](const Entry& left, const Entry& right) { return left.id == right.id; },
        [&](std::size_t first, std::size_t end) {
            std::vector<Item> group;
            for (std::size_t at = first; at < end; ++at) group.push_back(entries[at].item);
            reportGroup(survey, group, "duplicate-id", "identifier");
        });
}

void checkNames(Survey& survey, gem::Kind kind) {
    struct Entry {
        std::vector<std::uint8_t> key;  // brings equal names together; sameName decides
        std::string name;
        Item item;
    };
    std::vector<Entry> entries;
    for (const Item& item : itemsIn(survey, gem::rulesOf(kind).names)) {
        Entry entry{{}, item.name(), item};
        if (base::isBlank(entry.name)) continue;
        jet::appendTextKey(entry.key, base::trimBlanks(entry.name), true);
        entries.push_back(std::move(entry));
    }
    std::ranges::stable_sort(entries, {}, &Entry::key);
    forGroups(
        entries,
        [](const Entry& left, const Entry& right) {
            return left.key == right.key && gem::sameName(left.name, right.name);
        },
        [&](std::size_t first, std::size_t end) {
            std::vector<Item> group;
            for (std::size_t at = first; at < end; ++at) group.push_back(entries[at].item);
            reportGroup(survey, group, "duplicate-name", "name");
        });
}

std::set<std::int64_t> standardReports() {
    const Table table = standardItems(Part::Reports);
    std::set<std::int64_t> ids;
    for (const Row& row : table.rows)
        if (const auto id = table.number(row, factsOf(Part::Reports).id)) ids.insert(*id);
    return ids;
}

void checkReserved(Survey& survey, Part part) {
    const Table& table = survey.model[part];
    for (const Row& row : table.rows) {
        const Item item{part, &table, &row};
        if (!hasReservedId(item)) continue;
        survey.add(item, {Severity::Warning, "reserved-id", factsOf(part).id,
                          "The identifiers 0 to 100 belong to the items of the standard.",
                          "Add the " + std::string(factsOf(part).noun) +
                              " again with an identifier from 101 in its place."});
    }
}

}  // namespace

bool hasReservedId(const Item& item) {
    const PartFacts& facts = factsOf(item.part);
    if (!facts.custom || facts.kind == gem::Kind::Alarm) return false;
    const auto id = item.id();
    if (!id || *id < 0 || *id >= gem::rulesOf(facts.kind).lowestId) return false;
    static const std::set<std::int64_t> kReports = standardReports();
    return item.part != Part::Reports || !kReports.contains(*id);
}

void checkIdentities(Survey& survey) {
    for (const gem::Kind kind : kKinds) {
        checkIds(survey, kind);
        checkNames(survey, kind);
    }
    for (const Part part : {Part::CustomVariables, Part::CustomEvents, Part::Reports})
        checkReserved(survey, part);
}

}  // namespace stelvan::model
