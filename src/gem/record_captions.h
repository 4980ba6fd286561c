// Under which captions the faults of a record are listed, in the order of the lists.
#pragma once

#include <array>
#include <string_view>

namespace stelvan::gem {

struct FieldCaption {
    std::string_view field;  // the control's name
    std::string_view caption;
};

inline constexpr std::array<FieldCaption, 10> kVariableCaptions = {{
    {"txtVarName", "Variable Name"},
    {"txtVarID", "Variable ID"},
    {"txtVarGroup", "Variable Group"},
    {"txtVarDesc", "Variable Desc"},
    {"cmbVarFormat", "Variable Format"},
    {"txtVarMax", "Variable Max"},
    {"txtVarMin", "Variable Min"},
    {"txtVarUnit", "Variable Unit"},
    {"txtVarDefValue", "Variable Default Value"},
    {"txtVarValue", "Variable Value"},
}};

inline constexpr std::array<FieldCaption, 3> kReportCaptions = {{
    {"txtRptName", "Report Name"},
    {"txtRptID", "Report ID"},
    {"txtRptDesc", "Report Desc"},
}};

/// A report must carry at least one variable.
inline constexpr std::string_view kReportListCaption = "Report Variable List";
inline constexpr std::string_view kMustContainItem = "Must contain item.";

inline constexpr std::array<FieldCaption, 4> kEventCaptions = {{
    {"txtEvtName", "Event Name"},
    {"txtEvtID", "Event ID"},
    {"txtEvtGroup", "Event Group"},
    {"txtEvtDesc", "Event Desc"},
}};

inline constexpr std::array<FieldCaption, 8> kAlarmCaptions = {{
    {"txtAlmName", "Alarm Name"},
    {"txtAlmID", "Alarm ID"},
    {"txtAlmGroup", "Alarm Group"},
    {"txtAlmText", "Alarm Text"},
    {"txtAlmSetCEName", "Alarm Set CEName"},
    {"txtAlmSetCEID", "Alarm Set CEID"},
    {"txtAlmClrCEName", "Alarm Clear CEName"},
    {"txtAlmClrCEID", "Alarm Clear CEID"},
}};

}  // namespace stelvan::gem
