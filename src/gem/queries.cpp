#include "gem/queries.h"

#include "gem/formats.h"
#include "gem/schema.h"

namespace stelvan::gem {
namespace {

namespace event_report = schema::event_report;
namespace report_variable = schema::report_variable;
namespace table = schema::table;

template <class... Parts>
std::string joined(const Parts&... parts) {
    std::string text;
    (text.append(parts), ...);
    return text;
}

std::string_view variablesIn(Origin origin) {
    return origin == Origin::Standard ? table::kGemVariables : table::kCustomVariables;
}

std::string setChild(std::string_view assignment, const std::string& value, std::int32_t child) {
    return joined("UPDATE secs_cusvar SET ", assignment, value,
                  " WHERE var_id=", std::to_string(child));
}

}  // namespace

constinit const LinkTable kEventReports = {table::kEventReports, event_report::kEventId,
                                           event_report::kReportId, event_report::kOrder};
constinit const LinkTable kReportVariables = {table::kReportVariables, report_variable::kReportId,
                                              report_variable::kVariableId,
                                              report_variable::kOrder};

std::string linksOf(const LinkTable& links, std::string_view owner) {
    return joined("SELECT * FROM ", links.name, " WHERE ", links.owner, " = ", owner);
}

std::string allReports() {
    return "SELECT rpt_name, rpt_id FROM secs_report";
}

std::string reportsOf(std::string_view event) {
    return joined("SELECT rpt.rpt_name, rpt.rpt_id, evt.rpt_order FROM ", table::kEventReports,
                  " evt, secs_report rpt WHERE evt.evt_id = ", event,
                  " AND evt.rpt_id = rpt.rpt_id  ORDER BY evt.rpt_order ");
}

std::string topLevelVariables(Origin origin) {
    return joined("select var_name, var_id, var_type FROM ", variablesIn(origin),
                  " WHERE var_parentkey = 0");
}

std::string variablesOf(std::string_view report, Origin origin) {
    return joined("SELECT var.var_name, var.var_id, var.var_type, rpt.var_order ",
                  "FROM secs_rpt_var rpt, ", variablesIn(origin),
                  " var WHERE rpt.rpt_id = ", report,
                  " AND rpt.var_id = var.var_id ORDER BY rpt.var_order ");
}

std::string possibleChildren(std::string_view list, std::string_view type) {
    return joined("SELECT var_name, var_id, var_group, var_val FROM secs_cusvar WHERE var_id <> ",
                  list, " AND var_type = '", type,
                  "'  AND var_format <> 'L'  AND var_parentkey = 0 ");
}

std::string childrenOf(std::string_view list) {
    return joined("SELECT var_name, var_id, var_group, var_val, var_allowduplicates ",
                  "FROM secs_cusvar WHERE var_parentkey = ", list, " ORDER BY var_accessid ");
}

std::string childIdsOf(std::string_view list) {
    return joined("SELECT var_id FROM secs_cusvar WHERE var_parentkey = ", list);
}

std::string customVariable(std::int32_t id) {
    return joined("SELECT * FROM secs_cusvar WHERE var_id=", std::to_string(id));
}

std::string setParent(std::int32_t child, std::int32_t list) {
    return setChild("var_parentkey=", std::to_string(list), child);
}

std::string setPlace(std::int32_t child, std::int16_t place) {
    return setChild("var_accessid=", std::to_string(place), child);
}

std::string setDuplicates(std::int32_t child, bool allowed) {
    return setChild("var_allowduplicates=", allowed ? "True" : "False", child);
}

std::string allEvents(std::string_view events) {
    return joined("SELECT evt_id, evt_name FROM ", events);
}

std::string eventName(std::string_view events, std::string_view id) {
    return joined("SELECT evt_name FROM ", events, " WHERE evt_id = ", id);
}

std::string eventId(std::string_view events, std::string_view name) {
    return joined("SELECT evt_id FROM ", events, " WHERE evt_name = ", sqlText(name));
}

std::vector<std::string> cascadesOf(std::int16_t category, const std::string& id,
                                    std::string_view format) {
    switch (category) {
        case CSTEVT:
            return {"Delete FROM secs_def_evt_rpt WHERE evt_id = " + id};
        case CSTVDV:
        case CSTVSV:
            // The children of a list are released, not deleted.
            if (!isList(format)) return {};
            return {"UPDATE secs_cusvar  SET var_parentkey = 0  WHERE var_parentkey = " + id};
        case CSTRPT:
            return {"Delete FROM secs_def_evt_rpt WHERE rpt_id = " + id,
                    "Delete FROM secs_rpt_var WHERE rpt_id = " + id};
        default:
            return {};
    }
}

}  // namespace stelvan::gem
