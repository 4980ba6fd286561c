#include "browser/field_map.h"

#include "db/schema.h"
#include "form/main_state.h"

namespace stelvan::browser {
namespace {

using form::AlmFrame;
using form::EvtFrame;
using form::Field;
using form::LmtFrame;
using form::RptFrame;
using form::SttFrame;
using form::VarFrame;
namespace alarm = db::schema::alarm;
namespace event = db::schema::event;
namespace limit = db::schema::limit;
namespace report = db::schema::report;
namespace setting = db::schema::setting;
namespace variable = db::schema::variable;

template <class Frame>
struct Pair {
    Field* Frame::*field;
    const char* column;
};

constexpr Pair<EvtFrame> kEvent[] = {{&EvtFrame::txtEvtName, event::kName},
                                     {&EvtFrame::txtEvtID, event::kId},
                                     {&EvtFrame::txtEvtGroup, event::kGroup},
                                     {&EvtFrame::txtEvtDesc, event::kText},
                                     {&EvtFrame::chkEvtEnable, event::kEnable}};

constexpr Pair<VarFrame> kVariable[] = {{&VarFrame::txtVarName, variable::kName},
                                        {&VarFrame::txtVarID, variable::kId},
                                        {&VarFrame::txtVarGroup, variable::kGroup},
                                        {&VarFrame::txtVarDesc, variable::kDescription},
                                        {&VarFrame::cmbVarFormat, variable::kFormat},
                                        {&VarFrame::txtVarMin, variable::kMinimum},
                                        {&VarFrame::txtVarMax, variable::kMaximum},
                                        {&VarFrame::txtVarUnit, variable::kUnit},
                                        {&VarFrame::txtVarDefValue, variable::kDefaultValue},
                                        {&VarFrame::txtVarValue, variable::kValue}};

constexpr Pair<AlmFrame> kAlarm[] = {{&AlmFrame::txtAlmName, alarm::kName},
                                     {&AlmFrame::txtAlmID, alarm::kId},
                                     {&AlmFrame::txtAlmGroup, alarm::kGroup},
                                     {&AlmFrame::txtAlmText, alarm::kText},
                                     {&AlmFrame::chkAlmEnable, alarm::kEnable},
                                     {&AlmFrame::txtAlmSetCEID, alarm::kSetEventId},
                                     {&AlmFrame::txtAlmSetCEName, alarm::kSetEventName},
                                     {&AlmFrame::txtAlmClrCEID, alarm::kClearEventId},
                                     {&AlmFrame::txtAlmClrCEName, alarm::kClearEventName}};

constexpr Pair<SttFrame> kSettings[] = {{&SttFrame::txtSttName, setting::kField},
                                        {&SttFrame::txtSttValue, setting::kValue},
                                        {&SttFrame::txtSttDefValue, setting::kDefaultValue}};

constexpr Pair<RptFrame> kReport[] = {{&RptFrame::txtRptID, report::kId},
                                      {&RptFrame::txtRptName, report::kName},
                                      {&RptFrame::txtRptDesc, report::kDescription},
                                      {&RptFrame::chkRptDefault, report::kDefault}};

constexpr Pair<LmtFrame> kLimit[] = {{&LmtFrame::txtLmtID, limit::kId},
                                     {&LmtFrame::txtLmtVarID, limit::kVariableId},
                                     {&LmtFrame::txtLmtUBound, limit::kUpperBound},
                                     {&LmtFrame::txtLmtLBound, limit::kLowerBound},
                                     {&LmtFrame::txtLmtTransType, limit::kTransitionType}};

template <class Frame, std::size_t N>
std::vector<Binding> of(const Frame& frame, const Pair<Frame> (&pairs)[N]) {
    std::vector<Binding> bindings;
    for (const auto& pair : pairs) bindings.push_back({frame.*pair.field, pair.column});
    return bindings;
}

}  // namespace

std::vector<Binding> bindingsOf(const form::MainForm& form, std::int16_t category) {
    switch (category) {
        case form::GEMEVT:
        case form::CSTEVT:
            return of(form.evt, kEvent);
        case form::GEMVDV:
        case form::GEMSDV:
        case form::GEMVEC:
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            return of(form.var, kVariable);
        case form::CSTALM:
            return of(form.alm, kAlarm);
        case form::GEMSTT:
            return of(form.stt, kSettings);
        case form::CSTRPT:
            return of(form.rpt, kReport);
        case form::LIMIT:
            return of(form.lmt, kLimit);
        default:
            return {};
    }
}

}  // namespace stelvan::browser
