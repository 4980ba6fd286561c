#include "model/publish/dictionary.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "base/utf.h"
#include "gem/formats.h"
#include "gem/schema.h"
#include "model/core/values.h"
#include "model/publish/shown.h"
#include "model/publish/xml_text.h"

namespace stelvan::model {

/// `initial` is nullptr where there is none.
struct VariableKind {
    std::string_view type;
    const char* section;
    const char* element;
    const char* id;
    const char* name;
    const char* lowest;
    const char* highest;
    const char* initial;
    bool valuesFirst;  // before units and format
};

namespace {

using enum gem::Control;

namespace schema = gem::schema;

constexpr bool kOptional = true;
constexpr bool kRequired = false;

constexpr const char* kRoot = "sedd:DataDictionary";
/// The elements below the root are in no namespace, so none is the default.
constexpr const char* kRootTag =
    "sedd:DataDictionary xmlns:sedd=\"urn:semi-org:xsd.SEDD\" xmlns:smn=\"urn:semi-org:xsd.SMN\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"urn:semi-org:xsd.SEDD E172-0225-SEDD-Schema.xsd\"";

/// The schema wants one section of recipe parameters at least, and the model knows no recipes.
constexpr const char* kNoRecipes = "None";

constexpr std::size_t kLongestAlarmText = 120;

/// How the notation of items calls a format.
struct ItemName {
    std::string_view format;
    const char* element;
};
constexpr std::array kItemNames = {
    ItemName{"A", "smn:ASC"},  ItemName{"B", "smn:BIN"},  ItemName{"BL", "smn:BOO"},
    ItemName{"F4", "smn:FP4"}, ItemName{"F8", "smn:FP8"}, ItemName{"I1", "smn:SI1"},
    ItemName{"I2", "smn:SI2"}, ItemName{"I4", "smn:SI4"}, ItemName{"I8", "smn:SI8"},
    ItemName{"L", "smn:LST"},  ItemName{"U1", "smn:UI1"}, ItemName{"U2", "smn:UI2"},
    ItemName{"U4", "smn:UI4"}, ItemName{"U8", "smn:UI8"},
};
constexpr std::string_view kList = "L";
constexpr const char* kAnyItem = "smn:ANY";
constexpr std::string_view kAnyFormat = "ANY";

constexpr std::array kVariableKinds = {
    VariableKind{"DV", "DataVariables", "DataVariable", "VID", "DVVALNAME", "MinValue", "MaxValue",
                 nullptr, false},
    VariableKind{"SV", "StatusVariables", "StatusVariable", "SVID", "SVNAME", "MinValue",
                 "MaxValue", nullptr, false},
    VariableKind{"EC", "EquipmentConstants", "EquipmentConstant", "ECID", "ECNAME", "ECMIN",
                 "ECMAX", "ECDEF", true},
};

std::string idOf(const Item& item) {
    return std::to_string(*item.id());
}

std::string formatName(const Item& variable, std::string_view format) {
    if (format.empty()) return std::string(kAnyFormat);
    return gem::isList(format) ? "L" + idOf(variable) : std::string(format);
}

}  // namespace

void Dictionary::write(const SeddHeader& header) {
    xml_.root(kRoot, kRootTag, [&] {
        writeHeader(header);
        writeEvents();
        for (const VariableKind& kind : kVariableKinds) writeVariables(kind);
        writeAlarms(header.alarmCode);
        xml_.single("RecipeVariableParameters",
                    [](pugi::xml_node node) { node.append_attribute("RecipeType") = kNoRecipes; });
        writeFormats();
        writeReports();
        writeLinks();
    });
}

/// What XML cannot hold of a text is noted.
std::string Dictionary::clean(const Item& item, std::string_view column, const std::string& text) {
    std::string clean = xmlText(text);
    if (clean != text)
        notes_.add(item, std::string(column) +
                             " holds characters that XML cannot, so U+FFFD stands for them");
    return clean;
}

std::string Dictionary::textOf(const Item& item, std::string_view column) {
    return clean(item, column, item.text(column));
}

void Dictionary::writeHeader(const SeddHeader& header) {
    xml_.single("SEDDHeader", [&](pugi::xml_node node) {
        addElement(node, "MDLN", header.mdln.value_or(""));
        addElement(node, "SOFTREV", header.softrev.value_or(""));
        if (header.equipmentId) addElement(node, "EquipmentID", *header.equipmentId);
        addElement(node, "Supplier", header.supplier);
        addElement(node, "CreateDate", header.date);
        addElement(node, "Description", header.description);
    });
}

void Dictionary::writeEvents() {
    xml_.section("CollectionEvents", kRequired, [&] {
        for (const Catalogue::Event& event : catalogue_.events) {
            xml_.entry("CollectionEvent", [&](pugi::xml_node node) {
                addElement(node, "CEID", idOf(event.item));
                addElement(node, "CENAME", textOf(event.item, schema::event::kName));
                addValidData(node, event);
                addElement(node, "Description", textOf(event.item, schema::event::kText));
            });
        }
    });
}

/// The data variables that the event's reports carry, each once.
void Dictionary::addValidData(pugi::xml_node node, const Catalogue::Event& event) {
    pugi::xml_node list;
    std::set<const Row*> known;
    for (const Catalogue::Report* report : event.reports) {
        for (const Item& variable : report->variables) {
            if (typeOf(variable) != "DV" || !known.insert(variable.row).second) continue;
            if (!list) list = node.append_child("VALIDDVS");
            addElement(list, "VID", idOf(variable)).append_attribute("name") =
                textOf(variable, schema::variable::kName).c_str();
        }
    }
}

void Dictionary::writeVariables(const VariableKind& kind) {
    xml_.section(kind.section, kRequired, [&] {
        for (const Item& variable : catalogue_.variables)
            if (typeOf(variable) == kind.type)
                xml_.entry(kind.element,
                           [&](pugi::xml_node node) { addVariable(node, variable, kind); });
    });
}

void Dictionary::addVariable(pugi::xml_node node, const Item& item, const VariableKind& kind) {
    const gem::Record shown = shownRecord(item);
    const std::string_view format = secsFormat(shown[cmbVarFormat].text);
    formats_.insert(format);
    if (gem::isList(format)) lists_.emplace(*item.id(), item);
    if (format.empty()) notes_.add(item, "has no format of SECS-II, so its format is ANY");
    addElement(node, kind.id, idOf(item));
    addElement(node, kind.name, textOf(item, schema::variable::kName));
    if (kind.valuesFirst) addValues(node, item, shown, kind, format);
    if (const std::string& unit = shown[txtVarUnit].text; !base::isBlank(unit))
        addElement(node, "UNITS", clean(item, schema::variable::kUnit, unit));
    addElement(node, "Format", formatName(item, format));
    if (!kind.valuesFirst) addValues(node, item, shown, kind, format);
    addElement(node, "Description", textOf(item, schema::variable::kDescription));
}

void Dictionary::addValues(pugi::xml_node node, const Item& item, const gem::Record& shown,
                           const VariableKind& kind, std::string_view format) {
    struct Place {
        const char* element;
        gem::Control field;
    };
    for (const Place place : {Place{kind.lowest, txtVarMin}, Place{kind.highest, txtVarMax},
                              Place{kind.initial, txtVarDefValue}}) {
        const std::string& text = shown[place.field].text;
        if (place.element == nullptr || base::isBlank(text)) continue;
        if (format.empty() || secsValue(text, format))
            addElement(node, place.element, clean(item, place.element, text));
        else
            notes_.add(item, std::string(place.element) + " left out, since " + text + " is no " +
                                 std::string(format));
    }
}

void Dictionary::writeAlarms(int code) {
    xml_.section("Alarms", kRequired, [&] {
        for (const Item& alarm : catalogue_.alarms)
            xml_.entry("Alarm", [&](pugi::xml_node node) { addAlarm(node, alarm, code); });
    });
}

void Dictionary::addAlarm(pugi::xml_node node, const Item& alarm, int code) {
    const std::string text = textOf(alarm, schema::alarm::kText);
    const bool tooLong = base::characterCount(text) > kLongestAlarmText;
    if (tooLong)
        notes_.add(alarm, "its text is longer than " + std::to_string(kLongestAlarmText) +
                              " characters, so ALTX is empty and Description holds it");
    const gem::Record shown = shownRecord(alarm);
    addElement(node, "ALCD", std::to_string(code));
    addElement(node, "ALID", idOf(alarm));
    addElement(node, "ALTX", tooLong ? "" : text);
    addElement(node, "AlarmName", textOf(alarm, schema::alarm::kName));
    addAlarmEvent(node, "SetEvent", alarm, shown[txtAlmSetCEID].text);
    addAlarmEvent(node, "ClearEvent", alarm, shown[txtAlmClrCEID].text);
    addElement(node, "Description", text);
}

void Dictionary::addAlarmEvent(pugi::xml_node node, const char* name, const Item& alarm,
                               const std::string& id) {
    if (base::isBlank(id)) return;
    if (const Catalogue::Event* event = catalogue_.findEvent(wholeNumber(jet::Value(id))))
        addElement(node, name, idOf(event->item));
    else
        notes_.add(alarm, std::string(name) + " left out, since there is no event " + id);
}

void Dictionary::writeFormats() {
    const auto writeFormat = [&](const std::string& name, const auto& fill) {
        xml_.entry("VariableFormat", [&](pugi::xml_node node) {
            addElement(node, "FormatName", name);
            fill(node.append_child("SECSData"));
        });
    };
    xml_.section("VariableFormats", kRequired, [&] {
        for (const auto& [format, element] : kItemNames)
            if (formats_.contains(format) && !gem::isList(format))
                writeFormat(std::string(format),
                            [&](pugi::xml_node data) { data.append_child(element); });
        if (formats_.contains(""))
            writeFormat(std::string(kAnyFormat),
                        [](pugi::xml_node data) { data.append_child(kAnyItem); });
        for (const auto& [id, list] : lists_)
            writeFormat(formatName(list, kList), [&](pugi::xml_node data) {
                addItem(data, secsItem(list, references_), false);
            });
    });
}

void Dictionary::addItem(pugi::xml_node parent, const SecsItem& item, bool named) {
    const auto* const name = std::ranges::find(kItemNames, item.format, &ItemName::format);
    pugi::xml_node node = parent.append_child(name == kItemNames.end() ? kAnyItem : name->element);
    if (named) node.append_attribute("name") = xmlText(item.variable.name()).c_str();
    for (const SecsItem& child : item.items) addItem(node, child, true);
    if (gem::isList(item.format) && !item.fault.empty())
        notes_.add(item.variable, item.fault + "; that one is left out");
}

/// Marked as default report, or sent by an event: an equipment that has the link has the report.
void Dictionary::writeReports() {
    std::set<const Catalogue::Report*> linked;
    for (const Catalogue::Event& event : catalogue_.events)
        linked.insert(event.reports.begin(), event.reports.end());
    xml_.section("DefaultReportDefinitions", kOptional, [&] {
        for (const Catalogue::Report& report : catalogue_.reports) {
            const bool marked = isSet(report.item, schema::report::kDefault);
            if (!marked && !linked.contains(&report)) continue;
            xml_.entry("DefaultReportDefinition", [&](pugi::xml_node node) {
                addElement(node, "RPTID", idOf(report.item));
                addElement(node, "DefaultReportName", textOf(report.item, schema::report::kName));
                pugi::xml_node list = node.append_child("VIDList");
                for (const Item& variable : report.variables)
                    addElement(list, "VID", idOf(variable));
                addElement(node, "Description", textOf(report.item, schema::report::kDescription));
            });
        }
    });
}

void Dictionary::writeLinks() {
    bool first = true;
    xml_.section("DefaultEventReportLinks", kOptional, [&] {
        for (const Catalogue::Event& event : catalogue_.events) {
            if (event.reports.empty()) continue;
            if (first)
                xml_.entry("CanBeDeleted", [](pugi::xml_node node) { node.text().set(true); });
            first = false;
            xml_.entry("EventReportLink", [&](pugi::xml_node node) {
                addElement(node, "CEID", idOf(event.item));
                pugi::xml_node list = node.append_child("RPTIDList");
                for (const Catalogue::Report* report : event.reports)
                    addElement(list, "RPTID", idOf(report->item));
            });
        }
    });
}

}  // namespace stelvan::model
