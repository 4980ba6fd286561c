#include <array>
#include <vector>

#include "jet/rows/value_text.h"
#include "model/publish/manual/chapters.h"

namespace stelvan::model::manual {
namespace {

constexpr std::array kColumns = {Column{"Rule", "rule"}, Column{"Item", "item"},
                                 Column{"Finding, and what to do", "name"}};

void writeItem(Page& page, const Finding& finding) {
    Html& html = page.html;
    html.open("td");
    if (const auto item = page.itemOf(finding.table, finding.id)) {
        page.link(*item);
    } else {
        const std::string id = jet::textOf(finding.id);
        html.text(id.empty() && finding.name.empty() ? finding.table : id);
        if (!finding.name.empty()) html.text(" ").text(finding.name);
    }
    if (!finding.field.empty()) html.element("p", finding.field);
    html.close();
}

void writeRow(Page& page, const Finding& finding) {
    Html& html = page.html;
    html.open("tr").element("td", finding.rule);
    writeItem(page, finding);
    html.open("td").element("p", finding.text);
    if (!finding.mend.empty()) html.element("p", "mend", finding.mend);
    html.close().close().markup("\n");
}

/// The findings of one weight, under a heading of their own.
void writeGroup(Page& page, Severity severity, std::string_view title) {
    std::vector<const Finding*> group;
    for (const Finding& finding : page.findings)
        if (finding.severity == severity) group.push_back(&finding);
    if (group.empty()) return;
    const std::string id = "findings-" + std::string(nameOf(severity));
    page.html.open("section").attribute("aria-labelledby", id);
    page.html.open("h3").attribute("id", id).text(title).text(" ");
    page.html.element("span", "count", std::to_string(group.size())).close();
    page.table(title, "findings", kColumns, group.size(),
               [&](std::size_t number) { writeRow(page, *group[number]); });
    page.html.close();
}

}  // namespace

void writeFindings(Page& page) {
    if (page.findings.empty()) page.html.element("p", "Nothing was found.");
    writeGroup(page, Severity::Error, "Errors");
    writeGroup(page, Severity::Warning, "Warnings");
    writeGroup(page, Severity::Note, "Notes");
}

}  // namespace stelvan::model::manual
