// The equipment data dictionary as an XML document: its sections, in the order of the schema.
#pragma once

#include <array>
#include <map>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "gem/record.h"
#include "model/publish/item.h"
#include "model/publish/sedd.h"

namespace stelvan::model {

struct VariableKind;  // how the elements of one of the three kinds of variables are called

class Dictionary {
public:
    /// All three outlive it; `notes` gets what is left out or told otherwise.
    Dictionary(const Catalogue& catalogue, const CrossReference& references, Notes& notes)
        : catalogue_(catalogue), references_(references), notes_(notes) {}

    /// Once. The header is complete and has no texts that XML cannot hold.
    void build(const SeddHeader& header);
    void print(const Sink& sink) const;

private:
    std::string clean(const Item& item, std::string_view column, const std::string& text);
    std::string textOf(const Item& item, std::string_view column);

    void addHeader(const SeddHeader& header);
    void addEvents();
    void addValidData(pugi::xml_node node, const Catalogue::Event& event);
    void addVariables(const VariableKind& kind);
    void addVariable(pugi::xml_node section, const Item& item, const VariableKind& kind);
    void addValues(pugi::xml_node node, const Item& item, const gem::Record& shown,
                   const VariableKind& kind, std::string_view format);
    void addAlarms(int code);
    void addAlarmEvent(pugi::xml_node node, const char* name, const Item& alarm,
                       const std::string& id);
    void addFormats();
    void addItem(pugi::xml_node parent, const SecsItem& item, bool named);
    void addReports();
    void addLinks();

    const Catalogue& catalogue_;
    const CrossReference& references_;
    Notes& notes_;
    pugi::xml_document document_;
    pugi::xml_node root_;
    std::set<std::string_view> formats_;  // those in use; empty for what is none
    std::map<std::int64_t, Item> lists_;  // by identifier
};

}  // namespace stelvan::model
