#include "browser/field_map.h"

#include "app/form/main_state.h"

namespace stelvan::browser {
namespace {

using form::AlmFrame;
using form::EvtFrame;
using form::Field;
using form::LmtFrame;
using form::RptFrame;
using form::SttFrame;
using form::VarFrame;

template <class Frame>
struct Pair {
    Field* Frame::*field;
    const char* column;
};

constexpr Pair<EvtFrame> kEvent[] = {{&EvtFrame::txtEvtName, "evt_name"},
                                     {&EvtFrame::txtEvtID, "evt_id"},
                                     {&EvtFrame::txtEvtGroup, "evt_group"},
                                     {&EvtFrame::txtEvtDesc, "evt_text"},
                                     {&EvtFrame::chkEvtEnable, "evt_enable"}};

constexpr Pair<VarFrame> kVariable[] = {{&VarFrame::txtVarName, "var_name"},
                                        {&VarFrame::txtVarID, "var_id"},
                                        {&VarFrame::txtVarGroup, "var_group"},
                                        {&VarFrame::txtVarDesc, "var_desc"},
                                        {&VarFrame::cmbVarFormat, "var_format"},
                                        {&VarFrame::txtVarMin, "var_min"},
                                        {&VarFrame::txtVarMax, "var_max"},
                                        {&VarFrame::txtVarUnit, "var_unit"},
                                        {&VarFrame::txtVarDefValue, "var_defaultval"},
                                        {&VarFrame::txtVarValue, "var_val"}};

constexpr Pair<AlmFrame> kAlarm[] = {{&AlmFrame::txtAlmName, "alm_name"},
                                     {&AlmFrame::txtAlmID, "alm_id"},
                                     {&AlmFrame::txtAlmGroup, "alm_group"},
                                     {&AlmFrame::txtAlmText, "alm_text"},
                                     {&AlmFrame::chkAlmEnable, "alm_enable"},
                                     {&AlmFrame::txtAlmSetCEID, "alm_set_ceid"},
                                     {&AlmFrame::txtAlmSetCEName, "alm_set_cename"},
                                     {&AlmFrame::txtAlmClrCEID, "alm_clr_ceid"},
                                     {&AlmFrame::txtAlmClrCEName, "alm_clr_cename"}};

constexpr Pair<SttFrame> kSettings[] = {{&SttFrame::txtSttName, "set_field"},
                                        {&SttFrame::txtSttValue, "set_value"},
                                        {&SttFrame::txtSttDefValue, "set_defaultval"}};

constexpr Pair<RptFrame> kReport[] = {{&RptFrame::txtRptID, "rpt_id"},
                                      {&RptFrame::txtRptName, "rpt_name"},
                                      {&RptFrame::txtRptDesc, "rpt_desc"},
                                      {&RptFrame::chkRptDefault, "rpt_default"}};

constexpr Pair<LmtFrame> kLimit[] = {{&LmtFrame::txtLmtID, "limit_id"},
                                     {&LmtFrame::txtLmtVarID, "var_id"},
                                     {&LmtFrame::txtLmtUBound, "upperdb"},
                                     {&LmtFrame::txtLmtLBound, "lowerdb"},
                                     {&LmtFrame::txtLmtTransType, "transition_type"}};

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
