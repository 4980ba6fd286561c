#include "editing/access_rules.h"

#include "form/main_state.h"

namespace stelvan::editing {
namespace {

constexpr InputAccess kGemEventInputs[] = {
    {"txtEvtName", Access::Closed},     {"txtEvtID", Access::Closed},
    {"txtEvtGroup", Access::Closed},    {"txtEvtDesc", Access::Closed},
    {"chkEvtEnable", Access::CheckBox},
};

constexpr InputAccess kGemVariableInputs[] = {
    {"txtVarDefValue", Access::Follows}, {"txtVarValue", Access::Follows},
    {"txtVarName", Access::Closed},      {"txtVarID", Access::Closed},
    {"txtVarGroup", Access::Closed},     {"txtVarDesc", Access::Closed},
    {"txtVarMax", Access::Closed},       {"txtVarMin", Access::Closed},
    {"txtVarUnit", Access::Closed},      {"cmbVarFormat", Access::ClosedWhole},
    {"txtVarLmtCEID", Access::Closed},   {"txtVarLmtCEName", Access::Closed},
};

constexpr InputAccess kAlarmInputs[] = {
    {"txtAlmName", Access::Follows},      {"txtAlmGroup", Access::Follows},
    {"txtAlmText", Access::Follows},      {"txtAlmSetCEID", Access::Follows},
    {"txtAlmSetCEName", Access::Follows}, {"txtAlmClrCEID", Access::Follows},
    {"txtAlmClrCEName", Access::Follows}, {"txtAlmID", Access::ById},
    {"chkAlmEnable", Access::CheckBox},
};

constexpr InputAccess kCustomEventInputs[] = {
    {"txtEvtName", Access::Follows},    {"txtEvtGroup", Access::Follows},
    {"txtEvtDesc", Access::Follows},    {"txtEvtID", Access::ById},
    {"chkEvtEnable", Access::CheckBox},
};

constexpr InputAccess kCustomVariableInputs[] = {
    {"txtVarName", Access::Follows},    {"txtVarGroup", Access::Follows},
    {"txtVarDesc", Access::Follows},    {"txtVarDefValue", Access::Follows},
    {"txtVarValue", Access::Follows},   {"txtVarMax", Access::Follows},
    {"txtVarMin", Access::Follows},     {"txtVarUnit", Access::Follows},
    {"txtVarLmtCEID", Access::Follows}, {"txtVarLmtCEName", Access::Follows},
    {"txtVarID", Access::ById},         {"cmbVarFormat", Access::FollowsWhole},
};

constexpr InputAccess kSettingInputs[] = {
    {"txtSttValue", Access::Follows},
    {"txtSttDefValue", Access::Follows},
    {"txtSttName", Access::ClosedAsIs},
};

constexpr InputAccess kReportInputs[] = {
    {"txtRptName", Access::Follows},
    {"txtRptDesc", Access::Follows},
    {"txtRptID", Access::ById},
    {"chkRptDefault", Access::CheckBox},
};

constexpr InputAccess kLimitInputs[] = {
    {"txtLmtID", Access::Follows},        {"txtLmtVarID", Access::Follows},
    {"txtLmtUBound", Access::Follows},    {"txtLmtLBound", Access::Follows},
    {"txtLmtTransType", Access::Follows},
};

constexpr std::string_view kVariableMarked[] = {
    "txtVarName", "txtVarID",  "txtVarGroup", "txtVarDesc",   "txtVarDefValue", "txtVarValue",
    "txtVarMax",  "txtVarMin", "txtVarUnit",  "cmbVarFormat", "txtVarLmtCEID",  "txtVarLmtCEName"};
constexpr std::string_view kAlarmMarked[] = {"txtAlmName",      "txtAlmID",       "txtAlmGroup",
                                             "txtAlmText",      "txtAlmSetCEID",  "txtAlmClrCEID",
                                             "txtAlmSetCEName", "txtAlmClrCEName"};
constexpr std::string_view kEventMarked[] = {"txtEvtName", "txtEvtID", "txtEvtGroup", "txtEvtDesc"};
constexpr std::string_view kSettingMarked[] = {"txtSttValue", "txtSttDefValue"};
constexpr std::string_view kReportMarked[] = {"txtRptName", "txtRptID", "txtRptDesc"};

constexpr std::string_view kAlarmBlanked[] = {"txtAlmName",    "txtAlmID",        "txtAlmGroup",
                                              "txtAlmText",    "txtAlmSetCEID",   "txtAlmSetCEName",
                                              "txtAlmClrCEID", "txtAlmClrCEName", "chkAlmEnable"};
constexpr std::string_view kEventBlanked[] = {"txtEvtName", "txtEvtID", "txtEvtGroup", "txtEvtDesc",
                                              "chkEvtEnable"};
constexpr std::string_view kReportBlanked[] = {"txtRptName", "txtRptID", "txtRptDesc",
                                               "chkRptDefault"};
constexpr std::string_view kLimitBlanked[] = {"txtLmtID", "txtLmtVarID", "txtLmtUBound",
                                              "txtLmtLBound", "txtLmtTransType"};

constexpr CategoryRules kNone{};
constexpr CategoryRules kGemEvent{kGemEventInputs, "lvwRptList", false, {}, {}};
constexpr CategoryRules kGemVariable{
    kGemVariableInputs, "lvwChildItems", false, kVariableMarked, {}};
constexpr CategoryRules kAlarm{kAlarmInputs, {}, false, kAlarmMarked, kAlarmBlanked};
constexpr CategoryRules kCustomEvent{kCustomEventInputs, "lvwRptList", true, kEventMarked,
                                     kEventBlanked};
constexpr CategoryRules kCustomVariable{kCustomVariableInputs, "lvwChildItems", true,
                                        kVariableMarked, kVariableMarked};
constexpr CategoryRules kSetting{kSettingInputs, {}, false, kSettingMarked, {}};
constexpr CategoryRules kReport{kReportInputs, "lvwVarList", true, kReportMarked, kReportBlanked};
constexpr CategoryRules kLimit{kLimitInputs, {}, false, {}, kLimitBlanked};

}  // namespace

const CategoryRules& rulesOf(std::int16_t category) {
    switch (category) {
        case form::GEMEVT:
            return kGemEvent;
        case form::GEMVDV:
        case form::GEMSDV:
        case form::GEMVEC:
            return kGemVariable;
        case form::CSTALM:
            return kAlarm;
        case form::CSTEVT:
            return kCustomEvent;
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            return kCustomVariable;
        case form::GEMSTT:
            return kSetting;
        case form::CSTRPT:
            return kReport;
        case form::LIMIT:
            return kLimit;
        default:
            return kNone;
    }
}

}  // namespace stelvan::editing
