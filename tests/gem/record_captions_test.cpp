#include "gem/record_captions.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

namespace stelvan::gem {
namespace {

std::string listed(std::span<const FieldCaption> captions) {
    std::string all;
    for (const FieldCaption& c : captions)
        all += std::string(c.field) + " [" + std::string(c.caption) + "]\n";
    return all;
}

TEST(RecordCaptions, variable) {
    EXPECT_EQ(
        listed(kVariableCaptions),
        "txtVarName [Variable Name]\ntxtVarID [Variable ID]\ntxtVarGroup [Variable Group]\n"
        "txtVarDesc [Variable Desc]\ncmbVarFormat [Variable Format]\ntxtVarMax [Variable Max]\n"
        "txtVarMin [Variable Min]\ntxtVarUnit [Variable Unit]\n"
        "txtVarDefValue [Variable Default Value]\ntxtVarValue [Variable Value]\n");
}

TEST(RecordCaptions, report) {
    EXPECT_EQ(listed(kReportCaptions),
              "txtRptName [Report Name]\ntxtRptID [Report ID]\ntxtRptDesc [Report Desc]\n");
    EXPECT_EQ(kReportListCaption, "Report Variable List");
    EXPECT_EQ(kMustContainItem, "Must contain item.");
}

TEST(RecordCaptions, event) {
    EXPECT_EQ(listed(kEventCaptions),
              "txtEvtName [Event Name]\ntxtEvtID [Event ID]\ntxtEvtGroup [Event Group]\n"
              "txtEvtDesc [Event Desc]\n");
}

TEST(RecordCaptions, alarm) {
    EXPECT_EQ(listed(kAlarmCaptions),
              "txtAlmName [Alarm Name]\ntxtAlmID [Alarm ID]\ntxtAlmGroup [Alarm Group]\n"
              "txtAlmText [Alarm Text]\ntxtAlmSetCEName [Alarm Set CEName]\n"
              "txtAlmSetCEID [Alarm Set CEID]\ntxtAlmClrCEName [Alarm Clear CEName]\n"
              "txtAlmClrCEID [Alarm Clear CEID]\n");
}

}  // namespace
}  // namespace stelvan::gem
