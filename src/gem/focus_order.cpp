#include "gem/focus_order.h"

#include <algorithm>

namespace stelvan::gem {
namespace {

using enum Control;

// Irregular in places, and meant so: the report pool leads on to cmdSave while its buttons lead on
// into the list, and the last button of the child items leads back to their pool.
constexpr FocusStep kOthers[] = {
    {lvwItemSelection, {txtVarDefValue, cmdSelect}},
    {cmdSelect, {lvwItemSelection, cmdDeselect}},
    {cmdDeselect, {cmdSelect, cmdOrderUp}},
    {cmdOrderUp, {cmdDeselect, cmdOrderDown}},
    {cmdOrderDown, {cmdOrderUp, lvwItemSelection}},
    {lvwChildItems, {cmdOrderDown, cmdSave}, "cmdOrderDown_KeyDown"},

    {cmdRptSelect, {lvwRptPool, cmdRptDeselect}},
    {cmdRptDeselect, {cmdRptSelect, cmdRptOrderUp}},
    {cmdRptOrderUp, {cmdRptDeselect, cmdRptOrderDown}},
    {cmdRptOrderDown, {cmdRptOrderUp, lvwRptList}},
    {lvwRptPool, {cmdRptOrderDown, cmdSave}},

    {lvwVarPool, {chkRptDefault, cmdVarSelect}},
    {cmdVarSelect, {lvwVarPool, cmdVarDeselect}},
    {cmdVarDeselect, {cmdVarSelect, cmdVarOrderUp}},
    {cmdVarOrderUp, {cmdVarDeselect, cmdVarOrderDown}},
    {cmdVarOrderDown, {cmdVarOrderUp, lvwVarList}},
    {lvwVarList, {cmdVarOrderDown, cmdSave}},

    // The boxes that lie over the settings' text fields.
    {cmbSttValue, {cmbSttValue, cmbSttDefValue}},
    {cmbSttDefValue, {cmbSttValue, cmdSave}},
};

std::vector<FocusStep> wholeOrder() {
    std::vector<FocusStep> steps;
    for (const Kind kind :
         {Kind::Variable, Kind::Alarm, Kind::CollectionEvent, Kind::Report, Kind::ProtocolSettings})
        for (const FieldFacts& field : fieldsOf(kind))
            if (field.focus.next != None) steps.push_back({field.control, field.focus});
    steps.insert(steps.end(), std::begin(kOthers), std::end(kOthers));
    return steps;
}

}  // namespace

std::span<const FocusStep> focusOrder() {
    static const std::vector<FocusStep> steps = wholeOrder();
    return steps;
}

Control neighbourOf(Control from, bool backwards, bool formatEnabled) {
    const auto steps = focusOrder();
    const auto step = std::find_if(steps.begin(), steps.end(),
                                   [from](const FocusStep& s) { return s.control == from; });
    if (step == steps.end()) return None;
    const Neighbours& around = step->around;
    const Control neighbour = backwards ? around.previous : around.next;
    const bool passedOver =
        neighbour == cmbVarFormat && !formatEnabled && around.insteadOfFormat != None;
    return passedOver ? around.insteadOfFormat : neighbour;
}

}  // namespace stelvan::gem
