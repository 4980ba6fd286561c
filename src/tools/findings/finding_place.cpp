#include "tools/findings/finding_place.h"

#include <algorithm>
#include <array>
#include <span>

#include "base/text.h"
#include "gem/kinds.h"
#include "jet/rows/value_text.h"
#include "model/core/values.h"

namespace stelvan::tools {
namespace {

using browser::IndexedItem;
using model::Finding;
using model::Part;

constexpr std::array kVariables = {Part::CustomVariables, Part::StandardVariables};

/// Rules about the list that a record owns, whatever column they name.
constexpr std::array<std::string_view, 4> kAboutLists = {"empty-report", "unreported-event",
                                                         "empty-list", "order-gap"};

std::optional<std::size_t> itemWhere(const browser::ModelIndex& index, const auto& isIt) {
    const auto items = index.items();
    const auto found = std::ranges::find_if(items, isIt);
    if (found == items.end()) return std::nullopt;
    return static_cast<std::size_t>(found - items.begin());
}

std::optional<std::size_t> itemWithId(const browser::ModelIndex& index, std::span<const Part> parts,
                                      const jet::Value& id) {
    const auto number = model::wholeNumber(id);
    const std::string text = jet::textOf(id);
    for (const Part part : parts) {
        const auto found = itemWhere(index, [&](const IndexedItem& item) {
            if (item.part != part) return false;
            if (item.id != browser::kNoId) return number == item.id;
            return !text.empty() && index.nameOf(item) == text;
        });
        if (found) return found;
    }
    return std::nullopt;
}

/// The item itself, by its place: several may have one identifier.
std::optional<std::size_t> ownItem(const Finding& finding, const browser::ModelIndex& index) {
    const Part part = *finding.part;
    const auto there = itemWhere(index, [&](const IndexedItem& item) {
        return item.part == part && item.place == finding.row;
    });
    const auto number = model::wholeNumber(finding.id);
    if (there) {
        const IndexedItem& item = index.items()[*there];
        if (item.id == number.value_or(browser::kNoId)) return there;
    }
    return itemWithId(index, std::array{part}, finding.id);
}

std::optional<std::size_t> itemOf(const Finding& finding, const browser::ModelIndex& index) {
    if (model::isLinks(*finding.part))
        return itemWithId(index, model::ownersOf(*finding.part), finding.id);
    if (finding.part == Part::Limits) return itemWithId(index, kVariables, finding.id);
    return ownItem(finding, index);
}

gem::Control controlOf(const Finding& finding, gem::Kind kind) {
    const bool aboutList = std::ranges::count(kAboutLists, finding.rule) > 0;
    if (model::isLinks(*finding.part) || aboutList) return gem::factsOf(kind).list;
    for (const gem::FieldFacts& field : gem::fieldsOf(kind))
        if (!field.column.empty() && base::sameWord(field.column, finding.field))
            return field.control;
    return gem::Control::None;
}

}  // namespace

FindingPlace placeOf(const Finding& finding, const browser::ModelIndex& index) {
    if (!finding.part) return {{}, {}, "This is about the file, not about one record."};
    const auto item = itemOf(finding, index);
    if (!item)
        return {{}, {}, "There is no record to show: " + subjectOf(finding) + " is not there."};
    const std::int16_t category = index.items()[*item].category;
    if (category == gem::NO_CATEGORY)
        return {
            {}, {}, subjectOf(finding) + " is shown in no category, since its type is unknown."};
    return {item, controlOf(finding, gem::kindOf(category)), {}};
}

std::string subjectOf(const Finding& finding) {
    if (!finding.part) return "the file";
    const bool links = model::isLinks(*finding.part);
    const Part part = links ? model::ownersOf(*finding.part).front() : *finding.part;
    const std::string noun(finding.part == Part::Limits ? "limit of variable"
                                                        : model::factsOf(part).noun);
    const std::string id = jet::textOf(finding.id);
    if (id.empty() && finding.name.empty() && finding.row == jet::RowId{})
        return "table " + finding.table;
    std::string text = noun + " " + (id.empty() ? "without identifier" : id);
    if (!finding.name.empty()) text += " " + finding.name;
    return base::onOneLine(text);
}

}  // namespace stelvan::tools
