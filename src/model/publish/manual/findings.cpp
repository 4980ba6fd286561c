#include <array>

#include "model/publish/manual/chapters.h"

namespace stelvan::model::manual {
namespace {

constexpr std::array kColumns = {Column{"Weight", "flag"}, Column{"Item", "item"},
                                 Column{"Finding, and what to do", "name"}, Column{"Rule", "rule"}};

void writeItem(Page& page, const Finding& finding) {
    Html& html = page.html;
    html.open("td");
    if (const auto item = page.itemOf(finding.table, finding.id)) {
        page.link(*item);
    } else {
        html.text(finding.name.empty() ? finding.table : finding.name);
    }
    if (!finding.field.empty()) html.element("p", finding.field);
    html.close();
}

}  // namespace

void writeFindings(Page& page, std::span<const Finding> findings) {
    Html& html = page.html;
    if (findings.empty()) html.element("p", "Nothing was found.");
    page.table("Findings", "findings", kColumns, findings.size(), [&](std::size_t number) {
        const Finding& finding = findings[number];
        html.open("tr").attribute("class", nameOf(finding.severity));
        html.element("td", nameOf(finding.severity));
        writeItem(page, finding);
        html.open("td").element("p", finding.text);
        if (!finding.mend.empty()) html.element("p", "mend", finding.mend);
        html.close().element("td", finding.rule).close().markup("\n");
    });
}

}  // namespace stelvan::model::manual
