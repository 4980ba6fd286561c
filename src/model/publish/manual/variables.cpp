#include <algorithm>
#include <array>
#include <utility>

#include "gem/formats.h"
#include "gem/schema.h"
#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

using enum gem::Control;
namespace schema = gem::schema;

constexpr std::array kColumns = {Column{"ID", "id"},         Column{"Name and meaning", "name"},
                                 Column{"Format", "format"}, Column{"Unit", "unit"},
                                 Column{"Range", "range"},   Column{"Default", "value"}};
constexpr std::array kConstantColumns = {
    Column{"ID", "id"},       Column{"Name and meaning", "name"}, Column{"Format", "format"},
    Column{"Unit", "unit"},   Column{"Range", "range"},           Column{"Default", "value"},
    Column{"Value", "value"},
};

std::string rangeText(const std::string& low, const std::string& high) {
    if (low.empty()) return high.empty() ? "" : "up to " + high;
    return high.empty() ? "from " + low : low + " to " + high;
}

std::vector<Item> itemsOf(std::span<const Relation::Entry> entries) {
    std::vector<Item> items;
    for (const auto& entry : entries) items.push_back(entry.item);
    return items;
}

/// The events that send one of the reports.
std::vector<Item> eventsOf(const Page& page, std::span<const Item> reports) {
    std::vector<Item> events;
    for (const Item& report : reports) {
        const auto links = page.references.eventsOfReport().of(report.id().value());
        const auto more =
            targetsOf(links, schema::event_report::kEventId, page.references.events());
        events.insert(events.end(), more.begin(), more.end());
    }
    std::ranges::sort(events, {},
                      [](const Item& event) { return std::pair(event.part, event.row); });
    const auto doubled = std::ranges::unique(events, {}, &Item::row);
    events.erase(doubled.begin(), doubled.end());
    return events;
}

/// All that refers to the variable, and what it holds or is held by.
void writeUses(Page& page, const Item& item, bool isList) {
    const auto id = item.id();
    if (!id) return;
    const CrossReference& references = page.references;
    if (isList) page.links("Holds", itemsOf(references.childrenOfList().of(*id)));
    const auto list = item.number(schema::variable::kParentKey).value_or(0);
    if (item.part == Part::CustomVariables && list != 0) {
        page.html.open("p").attribute("class", "use").element("span", "Held by:").text(" ");
        page.link(references.variables(), std::to_string(list));
        page.html.close();
    }
    const auto reports = targetsOf(references.reportsOfVariable().of(*id),
                                   schema::report_variable::kReportId, references.reports());
    page.links("In reports", reports);
    if (item.category() == gem::GEMVDV || item.category() == gem::CSTVDV)
        page.links("Sent with", eventsOf(page, reports));
    const auto limits = references.limitsOfVariable().of(*id);
    if (limits.empty()) return;
    page.html.open("p").attribute("class", "use").element("span", "Limits:");
    for (const auto& limit : limits) {
        page.html.text(" ").open("a").attribute("href", "#" + page.anchorOf(limit.item));
        page.html.text(limit.item.text(schema::limit::kId)).close();
    }
    page.html.close();
}

void writeRow(Page& page, const Item& item, bool isConstant) {
    Html& html = page.html;
    const gem::Record texts = textsOf(item);
    const std::string& format = texts[cmbVarFormat].text;
    page.idCell(item);
    html.open("td");
    page.nameAndText(texts[txtVarName].text, texts[txtVarGroup].text, texts[txtVarDesc].text);
    writeUses(page, item, gem::isList(format));
    html.close().element("td", format).element("td", texts[txtVarUnit].text);
    html.element("td", rangeText(texts[txtVarMin].text, texts[txtVarMax].text));
    html.element("td", texts[txtVarDefValue].text);
    if (isConstant) html.element("td", texts[txtVarValue].text);
}

}  // namespace

void writeVariables(Page& page, const Chapter& chapter, const Section& section) {
    const bool constants = chapter.content == Content::Constants;
    const std::span<const Column> columns =
        constants ? std::span<const Column>(kConstantColumns) : std::span<const Column>(kColumns);
    page.table(chapter, section, "variables", columns,
               [&](const Item& item) { writeRow(page, item, constants); });
}

}  // namespace stelvan::model::manual
