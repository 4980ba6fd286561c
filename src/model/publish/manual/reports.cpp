#include <array>

#include "gem/schema.h"
#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

using enum gem::Control;
namespace schema = gem::schema;

constexpr std::array kColumns = {Column{"ID", "id"}, Column{"Name, meaning and variables", "name"},
                                 Column{"Default", "flag"}};

void writeMembers(Page& page, std::span<const Relation::Entry> links) {
    Html& html = page.html;
    if (links.empty()) {
        html.element("p", "use", "Carries no variable.");
        return;
    }
    html.open("ol").attribute("class", "members");
    for (const auto& link : links) {
        html.open("li");
        page.link(page.references.variables(),
                  link.item.text(schema::report_variable::kVariableId));
        html.close();
    }
    html.close();
}

void writeRow(Page& page, const Item& report) {
    Html& html = page.html;
    const gem::Record texts = textsOf(report);
    page.idCell(report);
    html.open("td");
    page.nameAndText(texts[txtRptName].text, "", texts[txtRptDesc].text);
    if (const auto id = report.id()) {
        const CrossReference& references = page.references;
        writeMembers(page, references.variablesOfReport().of(*id));
        page.links("Sent with", targetsOf(references.eventsOfReport().of(*id),
                                          schema::event_report::kEventId, references.events()));
    }
    html.close().element("td", texts[chkRptDefault].text == "1" ? "yes" : "no");
}

}  // namespace

void writeReports(Page& page, const Chapter& chapter, const Section& section) {
    page.table(chapter, section, "reports", kColumns,
               [&](const Item& item) { writeRow(page, item); });
}

}  // namespace stelvan::model::manual
