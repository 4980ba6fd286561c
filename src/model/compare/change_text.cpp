#include "model/compare/change_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "jet/rows/value_text.h"
#include "model/core/json.h"

namespace stelvan::model {
namespace {

constexpr std::string_view kArrow = " -> ";

char signOf(Change change) {
    constexpr std::string_view kSigns = "+-~";
    return kSigns[static_cast<std::size_t>(change)];
}

char signOf(LinkChange::Kind kind) {
    constexpr std::string_view kSigns = "+-~~";
    return kSigns[static_cast<std::size_t>(kind)];
}

/// As it is, or in quotes and escaped where it holds what a terminal would obey.
std::string printable(const std::string& text) {
    const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
    if (std::ranges::none_of(text, isControl)) return text;
    std::string quoted;
    appendJsonText(quoted, text);
    return quoted;
}

std::string withName(std::string text, const std::string& name) {
    return name.empty() ? text : text + ' ' + printable(name);
}

/// An added item's field that is worth a line.
bool saysSomething(const jet::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return !text->empty();
    if (const auto* flag = std::get_if<bool>(&value)) return *flag;
    return !jet::isNull(value);
}

/// Whether the first line tells the field already.
bool isInHeading(const FieldChange& field, const PartFacts& facts) {
    return field.column == facts.id || field.column == facts.name;
}

void addFields(const ItemChange& change, std::vector<ChangeLine>& lines) {
    if (change.change == Change::Removed) return;
    const PartFacts& facts = factsOf(change.part);
    for (const FieldChange& field : change.fields) {
        if (change.change == Change::Changed)
            lines.push_back({' ', 1,
                             field.column + ": " + valueText(field.before) + std::string(kArrow) +
                                 valueText(field.after)});
        else if (saysSomething(field.after) && !isInHeading(field, facts))
            lines.push_back({' ', 1, field.column + ": " + valueText(field.after)});
    }
}

/// A link's target with its place, or both places.
std::string linkText(const LinkChange& link) {
    const std::string before = valueText(link.before);
    const std::string after = valueText(link.after);
    switch (link.kind) {
        case LinkChange::Kind::Added:
            return targetText(link) + " (place " + after + ")";
        case LinkChange::Kind::Removed:
            return targetText(link) + " (place " + before + ")";
        case LinkChange::Kind::Reordered:
            return targetText(link) + ": place " + before + std::string(kArrow) + after;
        case LinkChange::Kind::Changed:
            break;
    }
    return targetText(link) + " (place " + after + "):";
}

void addLinks(const ItemChange& change, std::vector<ChangeLine>& lines) {
    for (const LinkChange& link : change.links) {
        lines.push_back({signOf(link.kind), 1, linkText(link)});
        for (const FieldChange& field : link.fields)
            lines.push_back({' ', 2,
                             field.column + ": " + valueText(field.before) + std::string(kArrow) +
                                 valueText(field.after)});
    }
}

std::string_view colourOf(char sign) {
    switch (sign) {
        case '+':
            return "\x1b[32m";
        case '-':
            return "\x1b[31m";
        case '~':
            return "\x1b[33m";
        default:
            return {};
    }
}

}  // namespace

std::string idText(const jet::Value& id) {
    return jet::isNull(id) ? "without identifier" : printable(jet::textOf(id));
}

std::string itemText(const ItemChange& change) {
    const std::string table = " (" + printable(change.table) + ")";
    if (isLinks(change.part)) {
        const std::string_view noun = factsOf(ownersOf(change.part).front()).noun;
        return std::string(noun) + ' ' + idText(change.id) + ", which does not exist" + table;
    }
    const std::string noun(factsOf(change.part).noun);
    if (change.part == Part::Limits)
        return noun + ' ' + idText(change.place) + " of variable " + idText(change.id) + table;
    return withName(noun + ' ' + idText(change.id), change.name) + table;
}

std::string itemText(Part part, const Table& table, const Row& row) {
    const PartFacts& facts = factsOf(part);
    ItemChange change;
    change.part = part;
    change.id = table.value(row, facts.id);
    if (part == Part::Limits) change.place = table.value(row, facts.order);
    change.name = table.text(row, facts.name);
    change.table = table.name;
    return itemText(change);
}

std::string targetText(const LinkChange& link) {
    const std::string noun(factsOf(targetsOf(link.part).front()).noun);
    return withName(noun + ' ' + idText(link.target), link.targetName);
}

std::string valueText(const jet::Value& value) {
    std::string text;
    appendJsonValue(text, jet::toView(value));
    return text;
}

std::vector<ChangeLine> linesOf(const ItemChange& change) {
    std::vector<ChangeLine> lines{{signOf(change.change), 0, itemText(change)}};
    addFields(change, lines);
    addLinks(change, lines);
    return lines;
}

void writeChanges(std::span<const ItemChange> changes, bool coloured, const Sink& sink) {
    for (const ItemChange& change : changes) {
        for (const ChangeLine& line : linesOf(change)) {
            const std::string_view colour = coloured ? colourOf(line.sign) : std::string_view();
            std::string text(4 * line.depth, ' ');
            text += colour;
            if (line.sign != ' ') text.append({line.sign, ' '});
            text += line.text;
            if (!colour.empty()) text += "\x1b[0m";
            sink(text += '\n');
        }
    }
}

std::string summaryOf(std::span<const ItemChange> changes, bool would) {
    constexpr std::array<std::pair<Change, std::string_view>, 3> kWords = {{
        {Change::Added, "added"},
        {Change::Changed, "changed"},
        {Change::Removed, "removed"},
    }};
    std::string text;
    for (const auto& [change, word] : kWords) {
        const auto count = std::ranges::count(changes, change, &ItemChange::change);
        if (count == 0) continue;
        const bool first = text.empty();
        text += (first ? "" : ", ") + std::to_string(count) + ' ';
        if (first) text += count == 1 ? "item " : "items ";
        if (first && would) text += "would be ";
        text += word;
    }
    return text.empty() ? "no changes" : text;
}

}  // namespace stelvan::model
