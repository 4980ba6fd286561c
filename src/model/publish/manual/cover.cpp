#include "base/text.h"
#include "gem/schema.h"
#include "model/publish/manual/chapters.h"
#include "model/publish/manual/item_texts.h"

namespace stelvan::model::manual {
namespace {

/// The value of a variable that the standard prescribes by name; its default where it has none.
std::string valueOfVariable(const Model& model, std::string_view name) {
    for (const Part part : {Part::StandardVariables, Part::CustomVariables}) {
        const Table& table = model[part];
        for (const Row& row : table.rows) {
            const Item item{part, &table, &row};
            if (!base::sameWord(base::trimBlanks(item.name()), name)) continue;
            const gem::Record texts = textsOf(item);
            const std::string& value = texts[gem::Control::txtVarValue].text;
            return value.empty() ? texts[gem::Control::txtVarDefValue].text : value;
        }
    }
    return {};
}

std::string setting(const Model& model, std::string_view name) {
    const Table& table = model[Part::Settings];
    for (const Row& row : table.rows)
        if (table.text(row, gem::schema::setting::kField) == name)
            return table.text(row, gem::schema::setting::kValue);
    return {};
}

/// "HSMS_SS, PASSIVE", "SECSI-RS232".
std::string connectionOf(const Model& model) {
    const std::string type = setting(model, "ConnectionPortType");
    const std::string mode = setting(model, "HSMSConnectionType");
    return type.starts_with("HSMS") && !mode.empty() ? type + ", " + mode : type;
}

std::string addressAndPort(const std::string& address, const std::string& port) {
    return port.empty() ? address : address + " port " + port;
}

/// Where the host finds the equipment.
std::string portsOf(const Model& model) {
    if (!setting(model, "ConnectionPortType").starts_with("HSMS")) {
        const std::string speed = setting(model, "BaudRate");
        return setting(model, "SerialPort") + (speed.empty() ? "" : ", " + speed + " baud");
    }
    const bool active = setting(model, "HSMSConnectionType") == "ACTIVE";
    const std::string side = active ? "Remote" : "Local";
    return addressAndPort(setting(model, side + "IPAddress"), setting(model, side + "IPPort"));
}

void fact(Page& page, std::string_view term, const std::string& value) {
    if (value.empty()) return;
    page.html.open("div").element("dt", term).element("dd", value).close();
}

}  // namespace

std::string titleOf(const Model& model, const ManualOptions& options) {
    if (!options.title.empty()) return base::onOneLine(options.title);
    const std::string name = options.model.empty() ? valueOfVariable(model, "MDLN") : options.model;
    return name.empty() ? "GEM interface manual" : base::onOneLine(name) + ": GEM interface manual";
}

void writeCover(Page& page) {
    Html& html = page.html;
    const Model& model = page.model;
    const ManualOptions& options = page.options;
    html.open("header").attribute("class", "cover");
    html.element("p", "kicker", "SECS/GEM interface");
    html.element("h1", titleOf(model, options));
    html.open("dl");
    fact(page, "Maker", options.maker);
    fact(page, "Model", options.model);
    fact(page, "Version", options.version);
    fact(page, "MDLN", valueOfVariable(model, "MDLN"));
    fact(page, "SOFTREV", valueOfVariable(model, "SOFTREV"));
    fact(page, "Device ID", setting(model, "DeviceID"));
    fact(page, "Connection", connectionOf(model));
    fact(page, "Port", portsOf(model));
    fact(page, "Date", options.date);
    html.close().close().markup("\n");
}

void writeContents(Page& page) {
    Html& html = page.html;
    html.open("nav").attribute("id", "contents").attribute("aria-labelledby", "contents-title");
    html.open("h2").attribute("id", "contents-title").text("Contents").close().open("ol");
    const auto entry = [&](std::string_view id, std::string_view number, std::string_view title,
                           std::size_t count) {
        html.open("a").attribute("href", "#" + std::string(id));
        html.element("span", "no", number).text(" ").text(title).close();
        if (count > 0) html.text(" ").element("span", "count", std::to_string(count));
    };
    for (const Chapter& chapter : page.chapters) {
        html.open("li");
        entry(chapter.id, chapter.number, chapter.title,
              chapter.content == Content::Findings ? page.findings.size() : chapter.items());
        if (chapter.sections.size() > 1) {
            html.open("ol");
            for (const Section& section : chapter.sections) {
                html.open("li");
                entry(section.id, "", section.title, section.items.size());
                html.close();
            }
            html.close();
        }
        html.close();
    }
    html.close().close().markup("\n");
}

}  // namespace stelvan::model::manual
