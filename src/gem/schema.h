// Names of the tables and columns of the GEM database, as its files spell them.
//
// The limit table is missing on purpose: files name it differently and no statement needs it.
#pragma once

namespace stelvan::gem::schema {

namespace table {
inline constexpr const char* kGemVariables = "secs_gemvar";
inline constexpr const char* kCustomVariables = "secs_cusvar";
inline constexpr const char* kGemEvents = "secs_gemevent";
inline constexpr const char* kCustomEvents = "secs_cusevent";
inline constexpr const char* kAlarms = "secs_alarm";
inline constexpr const char* kReports = "secs_report";
inline constexpr const char* kEventReports = "secs_def_evt_rpt";
inline constexpr const char* kReportVariables = "secs_rpt_var";
inline constexpr const char* kSettings = "secs_setting";
}  // namespace table

namespace variable {
inline constexpr const char* kId = "var_id";
inline constexpr const char* kName = "var_name";
inline constexpr const char* kType = "var_type";
inline constexpr const char* kGroup = "var_group";
inline constexpr const char* kDescription = "var_desc";
inline constexpr const char* kFormat = "var_format";
inline constexpr const char* kMinimum = "var_min";
inline constexpr const char* kMaximum = "var_max";
inline constexpr const char* kUnit = "var_unit";
inline constexpr const char* kDefaultValue = "var_defaultval";
inline constexpr const char* kValue = "var_val";
inline constexpr const char* kParentKey = "var_parentkey";
inline constexpr const char* kAccessId = "var_accessid";
inline constexpr const char* kAllowDuplicates = "var_allowduplicates";
}  // namespace variable

namespace event {
inline constexpr const char* kId = "evt_id";
inline constexpr const char* kName = "evt_name";
inline constexpr const char* kGroup = "evt_group";
inline constexpr const char* kText = "evt_text";
inline constexpr const char* kEnable = "evt_enable";
}  // namespace event

namespace alarm {
inline constexpr const char* kId = "alm_id";
inline constexpr const char* kName = "alm_name";
inline constexpr const char* kGroup = "alm_group";
inline constexpr const char* kText = "alm_text";
inline constexpr const char* kEnable = "alm_enable";
inline constexpr const char* kSetEventId = "alm_set_ceid";
inline constexpr const char* kSetEventName = "alm_set_cename";
inline constexpr const char* kClearEventId = "alm_clr_ceid";
inline constexpr const char* kClearEventName = "alm_clr_cename";
}  // namespace alarm

namespace report {
inline constexpr const char* kId = "rpt_id";
inline constexpr const char* kName = "rpt_name";
inline constexpr const char* kDescription = "rpt_desc";
inline constexpr const char* kDefault = "rpt_default";
}  // namespace report

namespace event_report {
inline constexpr const char* kEventId = "evt_id";
inline constexpr const char* kReportId = "rpt_id";
inline constexpr const char* kOrder = "rpt_order";
}  // namespace event_report

namespace report_variable {
inline constexpr const char* kReportId = "rpt_id";
inline constexpr const char* kVariableId = "var_id";
inline constexpr const char* kOrder = "var_order";
}  // namespace report_variable

namespace setting {
inline constexpr const char* kField = "set_field";
inline constexpr const char* kValue = "set_value";
inline constexpr const char* kDefaultValue = "set_defaultval";
}  // namespace setting

namespace limit {
inline constexpr const char* kId = "limit_id";
inline constexpr const char* kVariableId = "var_id";
inline constexpr const char* kUpperBound = "upperdb";
inline constexpr const char* kLowerBound = "lowerdb";
inline constexpr const char* kTransitionType = "transition_type";
}  // namespace limit

}  // namespace stelvan::gem::schema
