#include "model/check/lists.h"

#include "gem/formats.h"
#include "gem/schema.h"
#include "model/check/links.h"
#include "model/check/survey.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

namespace variable = gem::schema::variable;

/// Parents as positions among the custom variables' rows; kNone where there is none.
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::vector<std::size_t> parentPositions(const Table& table, const CrossReference& references,
                                         std::size_t parentColumn) {
    std::vector<std::size_t> positions(table.rows.size(), kNone);
    for (std::size_t at = 0; at < table.rows.size(); ++at) {
        const auto parent = wholeNumber(table.rows[at].values[parentColumn]);
        if (!parent.has_value() || *parent == 0) continue;
        for (const Relation::Entry& entry : references.variables().of(*parent))
            if (entry.item.part == Part::CustomVariables)
                positions[at] = static_cast<std::size_t>(entry.item.row - table.rows.data());
    }
    return positions;
}

/// Marks the rows that come back to themselves. Every row is walked over once.
std::vector<bool> inLoops(const std::vector<std::size_t>& parents) {
    std::vector<bool> looped(parents.size());
    std::vector<std::size_t> walk(parents.size());  // by which walk a row was reached, from 1
    for (std::size_t start = 0; start < parents.size(); ++start) {
        std::size_t at = start;
        while (at != kNone && walk[at] == 0) {
            walk[at] = start + 1;
            at = parents[at];
        }
        if (at == kNone || walk[at] != start + 1) continue;
        for (std::size_t member = at; !looped[member]; member = parents[member])
            looped[member] = true;
    }
    return looped;
}

Held heldBy(const CrossReference& references, const jet::Value& parentKey) {
    const auto parent = wholeNumber(parentKey);
    if (parent == 0) return Held::Free;
    const auto item = CrossReference::first(references.variables(), parent);
    if (!item) return Held::Orphan;
    return gem::isList(item->text(variable::kFormat)) ? Held::InList : Held::NoList;
}

std::string parentText(const Item& item) {
    return item.text(variable::kParentKey);
}

void report(Survey& survey, const Item& item, Held held) {
    const auto add = [&](std::string_view rule, std::string text, std::string mend) {
        survey.add(item,
                   {Severity::Error, rule, variable::kParentKey, std::move(text), std::move(mend)});
    };
    switch (held) {
        case Held::Loop:
            return add("list-loop",
                       "The list that holds it, variable " + parentText(item) +
                           ", is in the end held by it.",
                       "Take one variable of the circle out of its list: parent 0.");
        case Held::Orphan:
            return add("orphan-child",
                       parentText(item).empty()
                           ? "Whether a list holds it is not said (Null); no list offers it."
                           : "There is no variable " + parentText(item) + " to hold it.",
                       "Release it: parent 0 (check --fix).");
        case Held::NoList:
            return add("child-of-no-list",
                       "Variable " + parentText(item) + ", which holds it, is no list.",
                       "Give that variable the format L, or release this one: parent 0.");
        case Held::Free:
        case Held::InList:
            return;
    }
}

}  // namespace

std::vector<Held> holdings(const Model& model, const CrossReference& references) {
    const Table& table = model[Part::CustomVariables];
    std::vector<Held> held(table.rows.size(), Held::Free);
    const auto parentColumn = table.find(variable::kParentKey);
    if (!parentColumn) return held;
    const std::vector<bool> looped = inLoops(parentPositions(table, references, *parentColumn));
    for (std::size_t at = 0; at < held.size(); ++at)
        held[at] =
            looped[at] ? Held::Loop : heldBy(references, table.rows[at].values[*parentColumn]);
    return held;
}

std::vector<ListsChildren> childrenByList(const CrossReference& references) {
    std::vector<ListsChildren> lists;
    std::optional<std::int64_t> last;
    for (const Relation::Entry& entry : references.childrenOfList().all()) {
        if (last != entry.key) {
            const auto list = CrossReference::first(references.variables(), entry.key);
            if (!list || !gem::isList(list->text(variable::kFormat))) continue;
            lists.push_back({*list, {}});
            last = entry.key;
        }
        lists.back().children.push_back(entry.item);
    }
    return lists;
}

void checkLists(Survey& survey) {
    const Table& table = survey.model[Part::CustomVariables];
    tell(survey.progress, "checking lists", 0, table.rows.size());
    const auto format = table.find(variable::kFormat);
    for (std::size_t at = 0; at < survey.held.size(); ++at) {
        const Item item{Part::CustomVariables, &table, &table.rows[at]};
        report(survey, item, survey.held[at]);
        const auto id = item.id();
        if (format && id && gem::isList(item.text(variable::kFormat)) &&
            survey.references.childrenOfList().of(*id).empty())
            survey.add(item, {Severity::Warning, "empty-list", "", "The list holds no variable.",
                              "Open it with \"Edit\" and choose its child items, or delete it."});
    }
    for (const ListsChildren& list : childrenByList(survey.references))
        if (!countsFromOne(list.children, variable::kAccessId))
            survey.add(list.list, {Severity::Warning, "order-gap", variable::kAccessId,
                                   "The places of its child items are not 1 to " +
                                       std::to_string(list.children.size()) + ".",
                                   "Number the child items anew (check --fix)."});
}

}  // namespace stelvan::model
