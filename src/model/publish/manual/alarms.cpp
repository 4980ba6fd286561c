#include <array>

#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

using enum gem::Control;

constexpr std::array kColumns = {Column{"ID", "id"}, Column{"Name and text", "name"},
                                 Column{"Set by event", "event"},
                                 Column{"Cleared by event", "event"}, Column{"Reported", "flag"}};

/// The event by its identifier; by its name alone where the alarm has no more.
void writeEventCell(Page& page, const std::string& id, const std::string& name) {
    page.html.open("td");
    if (id.empty()) {
        page.html.text(name);
    } else {
        page.link(page.references.events(), id);
    }
    page.html.close();
}

void writeRow(Page& page, const Item& alarm) {
    Html& html = page.html;
    const gem::Record texts = textsOf(alarm);
    page.idCell(alarm);
    html.open("td");
    page.nameAndText(texts[txtAlmName].text, texts[txtAlmGroup].text, texts[txtAlmText].text);
    html.close();
    writeEventCell(page, texts[txtAlmSetCEID].text, texts[txtAlmSetCEName].text);
    writeEventCell(page, texts[txtAlmClrCEID].text, texts[txtAlmClrCEName].text);
    html.element("td", texts[chkAlmEnable].text == "1" ? "yes" : "no");
}

}  // namespace

void writeAlarms(Page& page, const Chapter& chapter, const Section& section) {
    page.table(chapter, section, "alarms", kColumns,
               [&](const Item& item) { writeRow(page, item); });
}

}  // namespace stelvan::model::manual
