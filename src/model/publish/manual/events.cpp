#include "gem/schema.h"
#include "model/publish/event_svg.h"
#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

using enum gem::Control;

std::vector<Item> alarmsOf(const Relation& relation, std::int64_t event) {
    std::vector<Item> alarms;
    for (const auto& entry : relation.of(event)) alarms.push_back(entry.item);
    return alarms;
}

void writePicture(Page& page, const EventPicture& picture) {
    if (picture.reports == 0) {
        page.html.element("p", "use", "Sends no report.");
        return;
    }
    page.html.open("figure");
    writeSvg(page.html, picture, [&](const Item& item) { return page.anchorOf(item); });
    page.html.close();
}

void writeEvent(Page& page, const Item& event) {
    Html& html = page.html;
    const gem::Record texts = textsOf(event);
    const EventPicture picture = pictureOf(event, page.references);
    html.open("article");
    page.markItem(event);
    html.attribute("style", "--height:" + std::to_string(picture.height));
    html.open("h4").element("span", "id", event.idText()).text(" ");
    html.element("b", texts[txtEvtName].text);
    if (!texts[txtEvtGroup].text.empty()) html.text(" ").element("i", texts[txtEvtGroup].text);
    html.close();
    if (texts[chkEvtEnable].text == "0") html.element("p", "off", "Not reported.");
    if (!texts[txtEvtDesc].text.empty()) html.element("p", texts[txtEvtDesc].text);
    writePicture(page, picture);
    if (const auto id = event.id()) {
        page.links("Sets alarms", alarmsOf(page.references.alarmsSetBy(), *id));
        page.links("Clears alarms", alarmsOf(page.references.alarmsClearedBy(), *id));
    }
    html.close().markup("\n");
}

}  // namespace

void writeEvents(Page& page, const Section& section) {
    for (const Item& event : section.items) {
        writeEvent(page, event);
        page.wroteItem();
    }
}

}  // namespace stelvan::model::manual
