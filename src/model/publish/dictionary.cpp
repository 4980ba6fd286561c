#include "model/publish/dictionary.h"

#include <algorithm>

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

constexpr const char* kDictionaryNamespace = "urn:semi-org:xsd.SEDD";
constexpr const char* kItemNamespace = "urn:semi-org:xsd.SMN";
constexpr const char* kSchemaLocation = "urn:semi-org:xsd.SEDD E172-0225-SEDD-Schema.xsd";
constexpr const char* kInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";

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

pugi::xml_node add(pugi::xml_node parent, const char* name, const std::string& text) {
    pugi::xml_node child = parent.append_child(name);
    if (!text.empty()) child.text().set(text.c_str());
    return child;
}

std::string formatName(const Item& variable, std::string_view format) {
    if (format.empty()) return std::string(kAnyFormat);
    return gem::isList(format) ? "L" + idOf(variable) : std::string(format);
}

}  // namespace

void Dictionary::build(const SeddHeader& header) {
    root_ = document_.append_child("sedd:DataDictionary");
    root_.append_attribute("xmlns:sedd") = kDictionaryNamespace;
    root_.append_attribute("xmlns:smn") = kItemNamespace;
    root_.append_attribute("xmlns:xsi") = kInstanceNamespace;
    root_.append_attribute("xsi:schemaLocation") = kSchemaLocation;
    addHeader(header);
    addEvents();
    for (const VariableKind& kind : kVariableKinds) addVariables(kind);
    addAlarms(header.alarmCode);
    root_.append_child("RecipeVariableParameters").append_attribute("RecipeType") = kNoRecipes;
    addFormats();
    addReports();
    addLinks();
}

void Dictionary::print(const Sink& sink) const {
    struct Pieces : pugi::xml_writer {
        explicit Pieces(const Sink& target) : sink(target) {}
        void write(const void* data, std::size_t size) override {
            sink({static_cast<const char*>(data), size});
        }
        const Sink& sink;
    } pieces(sink);
    document_.save(pieces, "  ", pugi::format_default, pugi::encoding_utf8);
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

void Dictionary::addHeader(const SeddHeader& header) {
    pugi::xml_node node = root_.append_child("SEDDHeader");
    add(node, "MDLN", header.mdln.value_or(""));
    add(node, "SOFTREV", header.softrev.value_or(""));
    if (header.equipmentId) add(node, "EquipmentID", *header.equipmentId);
    add(node, "Supplier", header.supplier);
    add(node, "CreateDate", header.date);
    add(node, "Description", header.description);
}

void Dictionary::addEvents() {
    pugi::xml_node section = root_.append_child("CollectionEvents");
    for (const Catalogue::Event& event : catalogue_.events) {
        pugi::xml_node node = section.append_child("CollectionEvent");
        add(node, "CEID", idOf(event.item));
        add(node, "CENAME", textOf(event.item, schema::event::kName));
        addValidData(node, event);
        add(node, "Description", textOf(event.item, schema::event::kText));
    }
}

/// The data variables that the event's reports carry, each once.
void Dictionary::addValidData(pugi::xml_node node, const Catalogue::Event& event) {
    pugi::xml_node list;
    std::set<const Row*> known;
    for (const Catalogue::Report* report : event.reports) {
        for (const Item& variable : report->variables) {
            if (typeOf(variable) != "DV" || !known.insert(variable.row).second) continue;
            if (!list) list = node.append_child("VALIDDVS");
            add(list, "VID", idOf(variable)).append_attribute("name") =
                textOf(variable, schema::variable::kName).c_str();
        }
    }
}

void Dictionary::addVariables(const VariableKind& kind) {
    pugi::xml_node section = root_.append_child(kind.section);
    for (const Item& variable : catalogue_.variables)
        if (typeOf(variable) == kind.type) addVariable(section, variable, kind);
}

void Dictionary::addVariable(pugi::xml_node section, const Item& item, const VariableKind& kind) {
    const gem::Record shown = shownRecord(item);
    const std::string_view format = secsFormat(shown[cmbVarFormat].text);
    formats_.insert(format);
    if (gem::isList(format)) lists_.emplace(*item.id(), item);
    if (format.empty()) notes_.add(item, "has no format of SECS-II, so its format is ANY");
    pugi::xml_node node = section.append_child(kind.element);
    add(node, kind.id, idOf(item));
    add(node, kind.name, textOf(item, schema::variable::kName));
    if (kind.valuesFirst) addValues(node, item, shown, kind, format);
    if (const std::string& unit = shown[txtVarUnit].text; !base::isBlank(unit))
        add(node, "UNITS", clean(item, schema::variable::kUnit, unit));
    add(node, "Format", formatName(item, format));
    if (!kind.valuesFirst) addValues(node, item, shown, kind, format);
    add(node, "Description", textOf(item, schema::variable::kDescription));
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
            add(node, place.element, clean(item, place.element, text));
        else
            notes_.add(item, std::string(place.element) + " left out, since " + text + " is no " +
                                 std::string(format));
    }
}

void Dictionary::addAlarms(int code) {
    pugi::xml_node section = root_.append_child("Alarms");
    for (const Item& alarm : catalogue_.alarms) {
        const std::string text = textOf(alarm, schema::alarm::kText);
        const std::string name = textOf(alarm, schema::alarm::kName);
        const bool tooLong = base::characterCount(text) > kLongestAlarmText;
        if (tooLong)
            notes_.add(alarm, "its text is longer than " + std::to_string(kLongestAlarmText) +
                                  " characters, so ALTX is empty and Description holds it");
        const gem::Record shown = shownRecord(alarm);
        pugi::xml_node node = section.append_child("Alarm");
        add(node, "ALCD", std::to_string(code));
        add(node, "ALID", idOf(alarm));
        add(node, "ALTX", tooLong ? "" : text);
        add(node, "AlarmName", name);
        addAlarmEvent(node, "SetEvent", alarm, shown[txtAlmSetCEID].text);
        addAlarmEvent(node, "ClearEvent", alarm, shown[txtAlmClrCEID].text);
        add(node, "Description", text);
    }
}

void Dictionary::addAlarmEvent(pugi::xml_node node, const char* name, const Item& alarm,
                               const std::string& id) {
    if (base::isBlank(id)) return;
    if (const Catalogue::Event* event = catalogue_.findEvent(wholeNumber(jet::Value(id))))
        add(node, name, idOf(event->item));
    else
        notes_.add(alarm, std::string(name) + " left out, since there is no event " + id);
}

void Dictionary::addItem(pugi::xml_node parent, const SecsItem& item, bool named) {
    const auto* const name = std::ranges::find(kItemNames, item.format, &ItemName::format);
    pugi::xml_node node = parent.append_child(name == kItemNames.end() ? kAnyItem : name->element);
    if (named) node.append_attribute("name") = xmlText(item.variable.name()).c_str();
    for (const SecsItem& child : item.items) addItem(node, child, true);
    if (gem::isList(item.format) && !item.fault.empty())
        notes_.add(item.variable, item.fault + "; that one is left out");
}

void Dictionary::addFormats() {
    pugi::xml_node section = root_.append_child("VariableFormats");
    const auto addFormat = [&](const std::string& name) {
        pugi::xml_node node = section.append_child("VariableFormat");
        add(node, "FormatName", name);
        return node.append_child("SECSData");
    };
    for (const auto& [format, element] : kItemNames)
        if (formats_.contains(format) && !gem::isList(format))
            addFormat(std::string(format)).append_child(element);
    if (formats_.contains("")) addFormat(std::string(kAnyFormat)).append_child(kAnyItem);
    for (const auto& [id, list] : lists_)
        addItem(addFormat(formatName(list, "L")), secsItem(list, references_), false);
}

/// Marked as default report, or sent by an event: an equipment that has the link has the report.
void Dictionary::addReports() {
    std::set<const Catalogue::Report*> linked;
    for (const Catalogue::Event& event : catalogue_.events)
        linked.insert(event.reports.begin(), event.reports.end());
    pugi::xml_node section;
    for (const Catalogue::Report& report : catalogue_.reports) {
        const bool wanted =
            linked.contains(&report) || isSet(report.item, schema::report::kDefault);
        if (!wanted) continue;
        if (!section) section = root_.append_child("DefaultReportDefinitions");
        pugi::xml_node node = section.append_child("DefaultReportDefinition");
        add(node, "RPTID", idOf(report.item));
        add(node, "DefaultReportName", textOf(report.item, schema::report::kName));
        pugi::xml_node list = node.append_child("VIDList");
        for (const Item& variable : report.variables) add(list, "VID", idOf(variable));
        add(node, "Description", textOf(report.item, schema::report::kDescription));
    }
}

void Dictionary::addLinks() {
    pugi::xml_node section;
    for (const Catalogue::Event& event : catalogue_.events) {
        if (event.reports.empty()) continue;
        if (!section) {
            section = root_.append_child("DefaultEventReportLinks");
            add(section, "CanBeDeleted", "true");
        }
        pugi::xml_node node = section.append_child("EventReportLink");
        add(node, "CEID", idOf(event.item));
        pugi::xml_node list = node.append_child("RPTIDList");
        for (const Catalogue::Report* report : event.reports)
            add(list, "RPTID", idOf(report->item));
    }
}

}  // namespace stelvan::model
