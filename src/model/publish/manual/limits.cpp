#include <array>

#include "gem/schema.h"
#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

using enum gem::Control;

constexpr std::array kColumns = {Column{"Variable", "name"}, Column{"Limit", "id"},
                                 Column{"Lower", "value"},   Column{"Upper", "value"},
                                 Column{"Unit", "unit"},     Column{"Transition", "value"}};

void writeRow(Page& page, const Item& limit) {
    Html& html = page.html;
    const gem::Record texts = textsOf(limit);
    const Relation& variables = page.references.variables();
    html.open("td");
    page.link(variables, texts[txtLmtVarID].text);
    html.close().open("th").attribute("scope", "row").text(texts[txtLmtID].text).close();
    html.element("td", texts[txtLmtLBound].text).element("td", texts[txtLmtUBound].text);
    const auto variable = CrossReference::first(variables, limit.id());
    html.element("td", variable ? textsOf(*variable)[txtVarUnit].text : "");
    html.element("td", texts[txtLmtTransType].text);
}

}  // namespace

void writeLimits(Page& page, const Chapter& chapter, const Section& section) {
    page.table(chapter, section, "limits", kColumns,
               [&](const Item& item) { writeRow(page, item); });
}

}  // namespace stelvan::model::manual
