#include "gem/settings.h"

#include <array>

#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"
#include "model/publish/setting_groups.h"

namespace stelvan::model::manual {
namespace {

constexpr std::array kColumns = {Column{"Setting", "name"}, Column{"Value", "value"},
                                 Column{"Default", "value"}, Column{"Unit", "unit"},
                                 Column{"Accepts", "accepts"}};

void writeValue(Html& html, const std::string& value, bool secret) {
    html.element("td", secret && !value.empty() ? "not shown" : value);
}

void writeRow(Page& page, const Item& item) {
    Html& html = page.html;
    const gem::Record texts = textsOf(item);
    const std::string& name = texts[gem::Control::txtSttName].text;
    const SettingPlace* place = placeOf(name);
    const gem::SettingRule* rule = gem::ruleFor(name);
    const bool secret = place != nullptr && place->secret;
    html.open("th").attribute("scope", "row").element("b", name);
    if (rule != nullptr) html.element("p", rule->meaning);
    html.close();
    writeValue(html, texts[gem::Control::txtSttValue].text, secret);
    writeValue(html, texts[gem::Control::txtSttDefValue].text, secret);
    html.element("td", rule == nullptr ? "" : rule->unit);
    html.element("td", rule == nullptr ? "" : acceptedBy(*rule));
}

}  // namespace

void writeSettings(Page& page, const Chapter& chapter, const Section& section) {
    page.table(chapter, section, "settings", kColumns,
               [&](const Item& item) { writeRow(page, item); });
}

}  // namespace stelvan::model::manual
