// The keyboard's way, control by control: name, previous, next.
#include "gem/focus_order.h"

#include <gtest/gtest.h>

#include <string>

namespace stelvan::gem {
namespace {

using enum Control;

std::string whole(bool formatEnabled) {
    std::string way;
    for (const FocusStep& step : focusOrder())
        way.append(nameOf(step.control))
            .append(" ")
            .append(nameOf(neighbourOf(step.control, true, formatEnabled)))
            .append(" ")
            .append(nameOf(neighbourOf(step.control, false, formatEnabled)))
            .append("\n");
    return way;
}

TEST(FocusOrder, eventsAndReportsLeadThroughTheirListsToSave) {
    const std::string way = whole(true);
    for (const char* step :
         {"txtEvtName txtEvtID txtEvtID\n", "txtEvtID txtEvtName txtEvtGroup\n",
          "txtEvtGroup txtEvtID txtEvtDesc\n", "txtEvtDesc txtEvtGroup chkEvtEnable\n",
          "chkEvtEnable txtEvtDesc lvwRptPool\n", "cmdRptSelect lvwRptPool cmdRptDeselect\n",
          "cmdRptDeselect cmdRptSelect cmdRptOrderUp\n",
          "cmdRptOrderUp cmdRptDeselect cmdRptOrderDown\n",
          "cmdRptOrderDown cmdRptOrderUp lvwRptList\n", "lvwRptPool cmdRptOrderDown cmdSave\n",
          "txtRptName txtRptName txtRptID\n", "txtRptID txtRptName txtRptDesc\n",
          "txtRptDesc txtRptID chkRptDefault\n", "chkRptDefault txtRptDesc lvwVarPool\n",
          "lvwVarPool chkRptDefault cmdVarSelect\n", "lvwVarList cmdVarOrderDown cmdSave\n"})
        EXPECT_NE(way.find(step), std::string::npos) << step;
}

TEST(FocusOrder, variablesPassADisabledFormatBoxBy) {
    EXPECT_EQ(neighbourOf(txtVarDesc, false, true), cmbVarFormat);
    EXPECT_EQ(neighbourOf(txtVarDesc, false, false), txtVarMin);
    EXPECT_EQ(neighbourOf(txtVarMin, true, true), cmbVarFormat);
    EXPECT_EQ(neighbourOf(txtVarMin, true, false), txtVarDesc);
    EXPECT_EQ(neighbourOf(txtVarMin, false, false), txtVarMax);
}

TEST(FocusOrder, oddTurnsStay) {
    EXPECT_EQ(neighbourOf(txtVarName, true, true), txtVarName);
    EXPECT_EQ(neighbourOf(txtAlmName, true, true), txtAlmID);
    EXPECT_EQ(neighbourOf(cmdOrderDown, false, true), lvwItemSelection);
    EXPECT_EQ(neighbourOf(lvwItemSelection, true, true), txtVarDefValue);
    EXPECT_EQ(neighbourOf(lvwChildItems, false, true), cmdSave);
    EXPECT_EQ(neighbourOf(txtSttDefValue, false, true), cmdSave);
    EXPECT_EQ(neighbourOf(cmbSttValue, false, true), cmbSttDefValue);
}

TEST(FocusOrder, controlsWithoutAPlaceHaveNoNeighbours) {
    for (const Control control : {cmdSave, lvwRptList, txtVarLmtCEID, txtSttName, txtLmtID})
        EXPECT_EQ(neighbourOf(control, false, true), None) << nameOf(control);
    EXPECT_EQ(focusOrder().size(), 49U);
}

}  // namespace
}  // namespace stelvan::gem
