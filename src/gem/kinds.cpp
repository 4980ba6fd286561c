#include "gem/kinds.h"

#include <algorithm>
#include <stdexcept>

#include "gem/schema.h"

namespace stelvan::gem {
namespace {

using enum Control;
namespace alarm = schema::alarm;
namespace event = schema::event;
namespace limit = schema::limit;
namespace report = schema::report;
namespace setting = schema::setting;
namespace variable = schema::variable;

constexpr std::int16_t kNameLength = 100;
constexpr std::int16_t kTextLength = 1000;

// control, column
//     access (standard, custom), shown, stored
//     check, {verified, judged, written}, caption
//     {previous, next}, length, names of handlers
//
// The orders and the keyboard's way are irregular in places, and meant so: a frame's first
// field names itself or its follower as the one before it, maximum is verified before minimum and
// judged after it.
// clang-format off

constexpr FieldFacts kVariable[] = {
    {txtVarName, variable::kName,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::TrimmedOrNull,
        Check::Name, {1, 1, 1}, "Variable Name",
        {txtVarName, txtVarID}, kNameLength},
    {txtVarID, variable::kId,
        Access::Closed, Access::ById, Shown::AsStored, Stored::Trimmed,
        Check::Id, {2, 2, 2}, "Variable ID",
        {txtVarName, txtVarGroup}},
    {txtVarGroup, variable::kGroup,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::TrimmedOrNull,
        Check::Group, {3, 3, 3}, "Variable Group",
        {txtVarID, txtVarDesc}},
    {txtVarDesc, variable::kDescription,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::TypedOrNull,
        Check::Text, {4, 4, 4}, "Variable Desc",
        {txtVarGroup, cmbVarFormat, txtVarMin}, kTextLength, {}, "txtVarGroup_Change"},
    {cmbVarFormat, variable::kFormat,
        Access::ClosedWhole, Access::FollowsWhole, Shown::AsStored, Stored::AsTyped,
        Check::Format, {5, 5, 10}, "Variable Format",
        {txtVarDesc, txtVarMin}},
    {txtVarMin, variable::kMinimum,
        Access::Closed, Access::Follows, Shown::LimitPair, Stored::ByFormat,
        Check::Minimum, {7, 6, 8}, "Variable Min",
        {cmbVarFormat, txtVarMax, txtVarDesc}},
    {txtVarMax, variable::kMaximum,
        Access::Closed, Access::Follows, Shown::LimitPair, Stored::ByFormat,
        Check::Maximum, {6, 7, 7}, "Variable Max",
        {txtVarMin, txtVarUnit}},
    {txtVarUnit, variable::kUnit,
        Access::Closed, Access::Follows, Shown::BlankForNullOrZero, Stored::TypedOrNull,
        Check::AlwaysValid, {8, 8, 9}, "Variable Unit",
        {txtVarMax, txtVarDefValue}},
    {txtVarDefValue, variable::kDefaultValue,
        Access::Follows, Access::Follows, Shown::BlankForNull, Stored::DefaultByFormat,
        Check::Content, {9, 10, 5}, "Variable Default Value",
        {txtVarUnit, txtVarValue}},
    {txtVarValue, variable::kValue,
        Access::Follows, Access::Follows, Shown::BlankForNull, Stored::ByFormat,
        Check::Content, {10, 9, 6}, "Variable Value",
        {txtVarDefValue, lvwItemSelection}},
    {txtVarLmtCEID, "",
        Access::Closed, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::AlwaysValid, {}, "", {}},
    {txtVarLmtCEName, "",
        Access::Closed, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::AlwaysValid, {}, "", {}},
};

constexpr FieldFacts kAlarm[] = {
    {txtAlmName, alarm::kName,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::Trimmed,
        Check::Name, {1, 1, 1}, "Alarm Name",
        {txtAlmID, txtAlmID}, kNameLength},
    {txtAlmID, alarm::kId,
        Access::Closed, Access::ById, Shown::AsStored, Stored::Trimmed,
        Check::Id, {2, 2, 2}, "Alarm ID",
        {txtAlmName, txtAlmGroup}},
    {txtAlmGroup, alarm::kGroup,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::Trimmed,
        Check::Group, {3, 4, 3}, "Alarm Group",
        {txtAlmID, txtAlmText}},
    {txtAlmText, alarm::kText,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::Text, {4, 3, 4}, "Alarm Text",
        {txtAlmGroup, chkAlmEnable}, kTextLength},
    {chkAlmEnable, alarm::kEnable,
        Access::CheckBox, Access::CheckBox, Shown::AsStored, Stored::Flag,
        Check::None, {0, 0, 5}, "",
        {txtAlmText, txtAlmSetCEName}},
    {txtAlmSetCEID, alarm::kSetEventId,
        Access::Closed, Access::Follows, Shown::BlankForNullOrZero, Stored::TrimmedOrZero,
        Check::EventId, {6, 5, 6}, "Alarm Set CEID",
        {txtAlmSetCEName, txtAlmClrCEName}},
    {txtAlmSetCEName, alarm::kSetEventName,
        Access::Closed, Access::Follows, Shown::BlankForNullOrZero, Stored::TrimmedOrNull,
        Check::EventName, {5, 6, 7}, "Alarm Set CEName",
        {chkAlmEnable, txtAlmSetCEID}},
    {txtAlmClrCEID, alarm::kClearEventId,
        Access::Closed, Access::Follows, Shown::BlankForNullOrZero, Stored::TrimmedOrZero,
        Check::EventId, {8, 7, 8}, "Alarm Clear CEID",
        {txtAlmClrCEName, cmdSave}, 0, "txtAlmClrCEID_lostfocus"},
    {txtAlmClrCEName, alarm::kClearEventName,
        Access::Closed, Access::Follows, Shown::BlankForNullOrZero, Stored::TrimmedOrNull,
        Check::EventName, {7, 8, 9}, "Alarm Clear CEName",
        {txtAlmSetCEID, txtAlmClrCEID}},
};

constexpr FieldFacts kEvent[] = {
    {txtEvtName, event::kName,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::Trimmed,
        Check::Name, {1, 1, 1}, "Event Name",
        {txtEvtID, txtEvtID}, kNameLength},
    {txtEvtID, event::kId,
        Access::Closed, Access::ById, Shown::AsStored, Stored::Trimmed,
        Check::Id, {2, 2, 2}, "Event ID",
        {txtEvtName, txtEvtGroup}},
    {txtEvtGroup, event::kGroup,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::Trimmed,
        Check::Group, {3, 3, 3}, "Event Group",
        {txtEvtID, txtEvtDesc}},
    {txtEvtDesc, event::kText,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::Text, {4, 4, 4}, "Event Desc",
        {txtEvtGroup, chkEvtEnable}, kTextLength, "txtEvtDesc_lostfocus"},
    {chkEvtEnable, event::kEnable,
        Access::CheckBox, Access::CheckBox, Shown::AsStored, Stored::Flag,
        Check::None, {0, 0, 5}, "",
        {txtEvtDesc, lvwRptPool}},
};

constexpr FieldFacts kReport[] = {
    {txtRptID, report::kId,
        Access::Closed, Access::ById, Shown::AsStored, Stored::Trimmed,
        Check::Id, {2, 2, 2}, "Report ID",
        {txtRptName, txtRptDesc}},
    {txtRptName, report::kName,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::Trimmed,
        Check::Name, {1, 1, 1}, "Report Name",
        {txtRptName, txtRptID}, kNameLength},
    {txtRptDesc, report::kDescription,
        Access::Closed, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::Text, {3, 3, 3}, "Report Desc",
        {txtRptID, chkRptDefault}, kTextLength},
    {chkRptDefault, report::kDefault,
        Access::CheckBox, Access::CheckBox, Shown::AsStored, Stored::Flag,
        Check::None, {0, 0, 4}, "",
        {txtRptDesc, lvwVarPool}},
};

constexpr FieldFacts kSetting[] = {
    {txtSttName, setting::kField,
        Access::ClosedAsIs, Access::ClosedAsIs, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
    {txtSttValue, setting::kValue,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::BySetting,
        Check::Setting, {1, 1, 1}, "Value::",
        {txtSttValue, txtSttDefValue}},
    {txtSttDefValue, setting::kDefaultValue,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::BySetting,
        Check::Setting, {2, 2, 2}, "Default Value::",
        {txtSttValue, cmdSave}},
};

constexpr FieldFacts kLimit[] = {
    {txtLmtID, limit::kId,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
    {txtLmtVarID, limit::kVariableId,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
    {txtLmtUBound, limit::kUpperBound,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
    {txtLmtLBound, limit::kLowerBound,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
    {txtLmtTransType, limit::kTransitionType,
        Access::Follows, Access::Follows, Shown::AsStored, Stored::AsTyped,
        Check::None, {}, "", {}},
};

constexpr std::array<KindFacts, 7> kKinds = {{
    {None, "", "", None, None},
    {lvwChildItems, "lVerifyVar", schema::table::kCustomVariables, txtVarName, txtVarDefValue},
    {None, "lVerifyAlm", schema::table::kAlarms, txtAlmName, None},
    {lvwRptList, "lVerifyEvt", schema::table::kCustomEvents, txtEvtName, chkEvtEnable},
    {None, "", "", None, None},
    {None, "lVerifySetting", schema::table::kSettings, None, None},
    {lvwVarList, "lVerifyRpt", schema::table::kReports, txtRptName, None},
}};
// clang-format on

constexpr Kind kAllKinds[] = {Kind::Variable,         Kind::Alarm,
                              Kind::CollectionEvent,  Kind::Limit,
                              Kind::ProtocolSettings, Kind::Report};

std::string nameOr(std::string_view given, Control control, std::string_view event) {
    if (!given.empty()) return std::string(given);
    return std::string(nameOf(control)).append(event);
}

}  // namespace

std::span<const FieldFacts> fieldsOf(Kind kind) {
    switch (kind) {
        case Kind::Variable:
            return kVariable;
        case Kind::Alarm:
            return kAlarm;
        case Kind::CollectionEvent:
            return kEvent;
        case Kind::Report:
            return kReport;
        case Kind::ProtocolSettings:
            return kSetting;
        case Kind::Limit:
            return kLimit;
        case Kind::None:
            break;
    }
    return {};
}

std::span<const FieldFacts> fieldsOf(std::int16_t category) {
    return fieldsOf(kindOf(category));
}

std::vector<const FieldFacts*> inOrder(Kind kind, std::int8_t Places::*order) {
    std::vector<const FieldFacts*> fields;
    for (const FieldFacts& field : fieldsOf(kind))
        if (field.at.*order > 0) fields.push_back(&field);
    std::sort(fields.begin(), fields.end(),
              [order](const FieldFacts* left, const FieldFacts* right) {
                  return left->at.*order < right->at.*order;
              });
    return fields;
}

const FieldFacts& factsOf(Control field) {
    for (const Kind kind : kAllKinds)
        for (const FieldFacts& facts : fieldsOf(kind))
            if (facts.control == field) return facts;
    throw std::logic_error("no field: " + std::string(nameOf(field)));
}

Control fieldWith(Kind kind, Check check) {
    for (const FieldFacts& field : fieldsOf(kind))
        if (field.check == check) return field.control;
    return None;
}

std::string lostFocusNameOf(const FieldFacts& field) {
    return nameOr(field.lostFocusName, field.control, "_LostFocus");
}

std::string changeNameOf(const FieldFacts& field) {
    return nameOr(field.changeName, field.control, "_Change");
}

Access accessIn(std::int16_t category, const FieldFacts& field) {
    return isCustom(category) ? field.custom : field.standard;
}

bool mayChange(std::int16_t category, const FieldFacts& field) {
    const Access access = accessIn(category, field);
    return access != Access::Closed && access != Access::ClosedWhole &&
           access != Access::ClosedAsIs;
}

const KindFacts& factsOf(Kind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace stelvan::gem
