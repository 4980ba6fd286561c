#include "tests/gemdb/dictionary_rules.h"

#include <limits>
#include <map>
#include <regex>
#include <set>

namespace stelvan::test {
namespace {

constexpr int kMany = std::numeric_limits<int>::max();

struct Child {
    std::string name;
    int least;
    int most;
};

/// "A B? C* D+" as children in order.
std::vector<Child> sequence(const std::string& text) {
    std::vector<Child> children;
    const std::regex word("([A-Za-z0-9]+)([?*+]?)");
    for (std::sregex_iterator at(text.begin(), text.end(), word), end; at != end; ++at) {
        const std::string how = (*at)[2];
        const bool optional = how == "?" || how == "*";
        const bool many = how == "*" || how == "+";
        children.push_back({(*at)[1], optional ? 0 : 1, many ? kMany : 1});
    }
    return children;
}

const std::string kEnd = " Description Source? SEMIStandard? WellKnownName?";

const std::map<std::string, std::vector<Child>>& grammar() {
    static const std::map<std::string, std::vector<Child>> kGrammar = {
        {"sedd:DataDictionary",
         sequence("SEDDHeader CollectionEvents DataVariables StatusVariables EquipmentConstants "
                  "Alarms RecipeVariableParameters+ VariableFormats SECSMessages? RemoteCommands? "
                  "SEMIStandards? DefaultReportDefinitions? DefaultEventReportLinks? "
                  "EquipmentCharacterization?")},
        {"SEDDHeader", sequence("MDLN SOFTREV EquipmentID? Supplier CreateDate Description")},
        {"CollectionEvents", sequence("CollectionEvent*")},
        {"CollectionEvent",
         sequence("CEID CENAME VALIDDVS? RelevantVariables? StateTransition?" + kEnd)},
        {"VALIDDVS", sequence("VID*")},
        {"DataVariables", sequence("DataVariable*")},
        {"DataVariable", sequence("VID DVVALNAME UNITS* Format MinValue? MaxValue?" + kEnd)},
        {"StatusVariables", sequence("StatusVariable*")},
        {"StatusVariable", sequence("SVID SVNAME UNITS* Format MinValue? MaxValue?" + kEnd)},
        {"EquipmentConstants", sequence("EquipmentConstant*")},
        {"EquipmentConstant", sequence("ECID ECNAME ECMIN? ECMAX? ECDEF? UNITS* Format" + kEnd)},
        {"Alarms", sequence("Alarm*")},
        {"Alarm", sequence("ALCD ALID ALTX AlarmName SetEvent? ClearEvent?" + kEnd)},
        {"RecipeVariableParameters", {}},
        {"VariableFormats", sequence("VariableFormat*")},
        {"VariableFormat", sequence("FormatName SECSData")},
        {"DefaultReportDefinitions", sequence("CanBeDeleted? DefaultReportDefinition*")},
        {"DefaultReportDefinition", sequence("RPTID DefaultReportName VIDList Description?")},
        {"VIDList", sequence("VID+")},
        {"DefaultEventReportLinks", sequence("CanBeDeleted EventReportLink*")},
        {"EventReportLink", sequence("CEID RPTIDList Description?")},
        {"RPTIDList", sequence("RPTID+")},
    };
    return kGrammar;
}

const std::set<std::string> kItems = {"smn:LST", "smn:BIN", "smn:BOO", "smn:ASC", "smn:SI8",
                                      "smn:SI1", "smn:SI2", "smn:SI4", "smn:FP8", "smn:FP4",
                                      "smn:UI8", "smn:UI1", "smn:UI2", "smn:UI4", "smn:ANY"};

const std::string kUnsigned = "[0-9]+";

/// What the text of an element must look like; all others take any text.
const std::map<std::string, std::string> kTexts = {
    {"VID", kUnsigned},
    {"SVID", kUnsigned},
    {"ECID", kUnsigned},
    {"CEID", kUnsigned},
    {"ALID", kUnsigned},
    {"RPTID", kUnsigned},
    {"SetEvent", kUnsigned},
    {"ClearEvent", kUnsigned},
    {"ALCD", "-?[0-9]{1,3}"},
    {"CreateDate", "[0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])"},
    {"CanBeDeleted", "true|false"},
};
const std::map<std::string, std::size_t> kLengths = {
    {"MDLN", 20}, {"SOFTREV", 20}, {"Supplier", 80}, {"ALTX", 120}, {"FormatName", 80}};

std::size_t characters(const std::string& text) {
    std::size_t count = 0;
    for (const char c : text)
        if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) ++count;
    return count;
}

class Judge {
public:
    std::vector<std::string> judge(const pugi::xml_document& dictionary) {
        const pugi::xml_node root = dictionary.document_element();
        expectEqual(root.name(), "sedd:DataDictionary");
        expectEqual(root.attribute("xmlns:sedd").value(), "urn:semi-org:xsd.SEDD");
        expectEqual(root.attribute("xmlns:smn").value(), "urn:semi-org:xsd.SMN");
        expectEqual(root.attribute("xsi:schemaLocation").value(),
                    "urn:semi-org:xsd.SEDD E172-0225-SEDD-Schema.xsd");
        if (root.attribute("xmlns")) breach("the root has a default namespace");
        element(root);
        if (!root.child("RecipeVariableParameters").attribute("RecipeType"))
            breach("no RecipeType");
        unique("VID", {"DataVariable/VID", "StatusVariable/SVID", "EquipmentConstant/ECID"}, root);
        unique("CEID", {"CollectionEvent/CEID"}, root);
        unique("ALID", {"Alarm/ALID"}, root);
        unique("FormatName", {"VariableFormat/FormatName"}, root);
        unique("RPTID", {"DefaultReportDefinition/RPTID"}, root);
        refer(root, "FormatName", "//Format");
        refer(root, "CEID", "//SetEvent | //ClearEvent | //EventReportLink/CEID");
        refer(root, "VID", "//VALIDDVS/VID | //VIDList/VID");
        refer(root, "RPTID", "//RPTIDList/RPTID");
        return breaches_;
    }

private:
    void breach(const std::string& text) { breaches_.push_back(text); }
    void expectEqual(const std::string& is, const std::string& wanted) {
        if (is != wanted) breach(is + " is not " + wanted);
    }

    void element(const pugi::xml_node& node) {
        const std::string name = node.name();
        if (name == "SECSData") return data(node);
        if (const auto rule = grammar().find(name); rule != grammar().end())
            return children(node, rule->second);
        if (!node.first_child().empty() && node.first_child().type() == pugi::node_element)
            breach(name + " has children");
        const std::string text = node.text().get();
        if (const auto rule = kTexts.find(name); rule != kTexts.end())
            if (!std::regex_match(text, std::regex(rule->second))) breach(name + " is " + text);
        if (name == "ALCD" && (std::atoi(text.c_str()) < -128 || std::atoi(text.c_str()) > 127))
            breach("ALCD is " + text);
        const auto length = kLengths.find(name);
        if (length != kLengths.end() && characters(text) > length->second)
            breach(name + " is too long");
    }

    void children(const pugi::xml_node& node, const std::vector<Child>& rule) {
        pugi::xml_node at = node.first_child();
        for (const Child& wanted : rule) {
            int count = 0;
            for (; at && at.name() == wanted.name && count < wanted.most;
                 at = at.next_sibling(), ++count)
                element(at);
            if (count < wanted.least) breach(wanted.name + " is missing in " + node.name());
        }
        if (at) breach(std::string(at.name()) + " is out of place in " + node.name());
    }

    /// One item, and only lists hold others.
    void data(const pugi::xml_node& node) {
        const bool one = node.first_child() && node.first_child() == node.last_child();
        if (!one) breach("SECSData does not hold one item");
        for (const pugi::xml_node& item : node.children()) this->item(item);
    }
    void item(const pugi::xml_node& node) {
        if (!kItems.contains(node.name())) breach(std::string(node.name()) + " is no item");
        if (node.first_child() && std::string(node.name()) != "smn:LST")
            breach(std::string(node.name()) + " holds something");
        for (const pugi::xml_node& child : node.children()) item(child);
    }

    void unique(const std::string& what, const std::vector<std::string>& paths,
                const pugi::xml_node& root) {
        for (const std::string& path : paths)
            for (const pugi::xpath_node& found : root.select_nodes(("//" + path).c_str()))
                if (!known_[what].insert(found.node().text().get()).second)
                    breach(what + " " + found.node().text().get() + " is there twice");
    }
    void refer(const pugi::xml_node& root, const std::string& what, const char* path) {
        for (const pugi::xpath_node& found : root.select_nodes(path))
            if (!known_[what].contains(found.node().text().get()))
                breach(std::string(found.node().name()) + " " + found.node().text().get() +
                       " leads nowhere");
    }

    std::vector<std::string> breaches_;
    std::map<std::string, std::set<std::string>> known_;
};

}  // namespace

std::vector<std::string> breachesOf(const pugi::xml_document& dictionary) {
    return Judge().judge(dictionary);
}

}  // namespace stelvan::test
