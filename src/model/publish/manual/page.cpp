#include "model/publish/manual/page.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "model/core/values.h"

namespace stelvan::model::manual {
namespace {

constexpr std::size_t kRowsOfSheet = 250;
constexpr std::size_t kMostLinksAtOnce = 12;

/// The letter with which places of a kind of item begin.
char letterOf(gem::Kind kind) {
    switch (kind) {
        case gem::Kind::Variable:
            return 'v';
        case gem::Kind::CollectionEvent:
            return 'e';
        case gem::Kind::Report:
            return 'r';
        case gem::Kind::Alarm:
            return 'a';
        case gem::Kind::ProtocolSettings:
            return 's';
        default:
            return 'l';
    }
}

}  // namespace

Page::Page(const Model& wholeModel, const ManualOptions& givenOptions, std::vector<Chapter> outline,
           const Sink& sink, const Progress& progress)
    : model(wholeModel),
      options(givenOptions),
      references(wholeModel),
      chapters(std::move(outline)),
      html(sink),
      progress_(progress) {
    for (const Chapter& chapter : chapters) total_ += chapter.items();
}

const Relation* Page::relationOf(gem::Kind kind) const {
    switch (kind) {
        case gem::Kind::Variable:
            return &references.variables();
        case gem::Kind::CollectionEvent:
            return &references.events();
        case gem::Kind::Report:
            return &references.reports();
        case gem::Kind::Alarm:
            return &references.alarms();
        default:
            return nullptr;
    }
}

std::string Page::anchorOf(const Item& item) const {
    const PartFacts& facts = factsOf(item.part);
    const std::string letter(1, letterOf(facts.kind));
    const Relation* relation = relationOf(facts.kind);
    const auto id = relation == nullptr ? std::nullopt : item.id();
    if (!id) {
        const auto row = item.row - item.table->rows.data() + 1;
        return letter + (facts.custom ? ".c" : ".s") + std::to_string(row);
    }
    const auto same = relation->of(*id);
    const auto at = std::ranges::find(same, item.row,
                                      [](const Relation::Entry& entry) { return entry.item.row; });
    std::string anchor = letter + std::to_string(*id);
    if (at != same.begin()) anchor += "." + std::to_string(at - same.begin() + 1);
    return anchor;
}

std::optional<Item> Page::itemOf(std::string_view table, const jet::Value& id) const {
    const auto facts = std::ranges::find_if(
        parts(), [&](const PartFacts& one) { return base::sameWord(model[one.part].name, table); });
    if (facts == parts().end()) return std::nullopt;
    const auto number = wholeNumber(id);
    if (facts->part == Part::EventReports)
        return CrossReference::first(references.events(), number);
    if (facts->part == Part::ReportVariables)
        return CrossReference::first(references.reports(), number);
    if (const Relation* relation = relationOf(facts->kind)) {
        if (!number) return std::nullopt;
        for (const auto& entry : relation->of(*number))
            if (entry.item.part == facts->part) return entry.item;
        return std::nullopt;
    }
    const Table& rows = model[facts->part];
    for (const Row& row : rows.rows)
        if (sameValue(rows.value(row, facts->id), id)) return Item{facts->part, &rows, &row};
    return std::nullopt;
}

void Page::link(const Item& item) {
    html.open("a").attribute("href", "#" + anchorOf(item));
    html.text(item.idText()).text(" ").text(item.name()).close();
}

void Page::link(const Relation& relation, const std::string& id) {
    if (const auto item = CrossReference::first(relation, wholeNumber(jet::Value(id)))) {
        link(*item);
    } else {
        html.element("span", "missing", id + " (not in the model)");
    }
}

void Page::links(std::string_view label, std::span<const Item> items) {
    if (items.empty()) return;
    const bool folded = items.size() > kMostLinksAtOnce;
    html.open(folded ? "details" : "p").attribute("class", "use");
    if (folded) {
        html.element("summary", std::string(label) + " (" + std::to_string(items.size()) + ")");
    } else {
        html.element("span", std::string(label) + ":").text(" ");
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) html.text(", ");
        link(items[i]);
    }
    html.close();
}

void Page::markItem(const Item& item) {
    html.attribute("id", anchorOf(item));
}

void Page::idCell(const Item& item) {
    html.open("th").attribute("scope", "row").text(item.idText()).close();
}

void Page::nameAndText(std::string_view name, std::string_view group, std::string_view text) {
    html.element("b", name);
    if (!group.empty()) html.text(" ").element("i", group);
    if (!text.empty()) html.element("p", text);
}

void Page::table(std::string_view title, std::string_view cssClass, std::span<const Column> columns,
                 std::size_t rows, const std::function<void(std::size_t)>& row) {
    for (std::size_t from = 0; from < rows; from += kRowsOfSheet) {
        const std::size_t to = std::min(rows, from + kRowsOfSheet);
        html.open("div").attribute("class", "sheet");
        html.attribute("style", "--rows:" + std::to_string(to - from));
        html.open("table").attribute("class", cssClass);
        const std::string part = std::to_string(from + 1) + " to " + std::to_string(to);
        html.attribute("aria-label",
                       std::string(title) + (rows > kRowsOfSheet ? ", " + part : std::string()));
        html.open("thead").open("tr");
        for (const Column& column : columns)
            html.open("th")
                .attribute("scope", "col")
                .attribute("class", column.cssClass)
                .text(column.title)
                .close();
        html.close().close().open("tbody");
        for (std::size_t i = from; i < to; ++i) row(i);
        html.close().close().close().markup("\n");
    }
}

void Page::table(const Chapter& chapter, const Section& section, std::string_view cssClass,
                 std::span<const Column> columns, const std::function<void(const Item&)>& row) {
    const std::string title = std::string(chapter.title) + ": " + std::string(section.title);
    table(title, cssClass, columns, section.items.size(), [&](std::size_t number) {
        html.open("tr");
        markItem(section.items[number]);
        row(section.items[number]);
        html.close().markup("\n");
        wroteItem();
    });
}

void Page::wroteItem() {
    constexpr std::size_t kEvery = 1000;
    if (++written_ % kEvery == 0) tell(progress_, "writing", written_, total_);
}

std::vector<Item> targetsOf(std::span<const Relation::Entry> links, std::string_view column,
                            const Relation& targets) {
    std::vector<Item> items;
    for (const auto& link : links) {
        const auto target = CrossReference::first(targets, link.item.number(column));
        if (target && (items.empty() || items.back().row != target->row)) items.push_back(*target);
    }
    return items;
}

}  // namespace stelvan::model::manual
