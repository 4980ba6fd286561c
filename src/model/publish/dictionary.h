// The equipment data dictionary itself: its sections, in the order of the schema.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "gem/record.h"
#include "model/publish/item.h"
#include "model/publish/sedd.h"
#include "model/publish/xml_pieces.h"

namespace stelvan::model {

struct VariableKind;  // how the elements of one of the three kinds of variables are called

class Dictionary {
public:
    /// All of them outlive it; `notes` gets what is left out or told otherwise.
    Dictionary(const Catalogue& catalogue, const CrossReference& references, const Sink& sink,
               Notes& notes)
        : catalogue_(catalogue), references_(references), notes_(notes), xml_(sink) {}

    /// Once. The header is complete and holds nothing that XML cannot.
    void write(const SeddHeader& header);

private:
    std::string clean(const Item& item, std::string_view column, const std::string& text);
    std::string textOf(const Item& item, std::string_view column);

    void writeHeader(const SeddHeader& header);
    void writeEvents();
    void addValidData(pugi::xml_node node, const Catalogue::Event& event);
    void writeVariables(const VariableKind& kind);
    void addVariable(pugi::xml_node node, const Item& item, const VariableKind& kind);
    void addValues(pugi::xml_node node, const Item& item, const gem::Record& shown,
                   const VariableKind& kind, std::string_view format);
    void writeAlarms(int code);
    void addAlarm(pugi::xml_node node, const Item& alarm, int code);
    void addAlarmEvent(pugi::xml_node node, const char* name, const Item& alarm,
                       const std::string& id);
    void writeFormats();
    void addItem(pugi::xml_node parent, const SecsItem& item, bool named);
    void writeReports();
    void writeLinks();

    const Catalogue& catalogue_;
    const CrossReference& references_;
    Notes& notes_;
    XmlPieces xml_;
    std::set<std::string_view> formats_;  // those in use; empty for what is none
    std::map<std::int64_t, Item> lists_;  // by identifier
};

}  // namespace stelvan::model
