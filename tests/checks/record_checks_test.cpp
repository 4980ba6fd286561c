#include "checks/record_checks.h"

#include "tests/support/check_bench.h"

namespace stelvan::checks {
namespace {

class RecordChecksTest : public test::CheckBench {
protected:
    void markAll(std::initializer_list<const char*> names, const QString& marker) {
        for (const char* name : names) field(name).setMarker(marker);
    }
    void giveReportAVariable() {
        form.variables.selected->appendRow({{"Clock", "1", "SV", "Y", ""}, false});
    }
};

TEST_F(RecordChecksTest, aRecordWithoutFaultsIsValidAndTheBoxIsEmptied) {
    giveReportAVariable();
    for (const auto verify : {&RecordChecks::lVerifyVar, &RecordChecks::lVerifyRpt,
                              &RecordChecks::lVerifyEvt, &RecordChecks::lVerifyAlm}) {
        box.lLogError("Old", "line");
        EXPECT_TRUE((records.*verify)());
        EXPECT_EQ(box.text(), "");
    }
}

TEST_F(RecordChecksTest, allFaultsOfAVariableAreListedInTheOrderOfItsTable) {
    markAll({"txtVarValue", "txtVarDefValue", "txtVarUnit", "txtVarMin", "txtVarMax",
             "cmbVarFormat", "txtVarDesc", "txtVarGroup", "txtVarID", "txtVarName"},
            "1");
    EXPECT_FALSE(records.lVerifyVar());
    const QString fault = "Cannot be empty string.";
    EXPECT_EQ(box.text(), line("Variable Name", fault) + line("Variable ID", fault) +
                              line("Variable Group", fault) + line("Variable Desc", fault) +
                              line("Variable Format", fault) + line("Variable Max", fault) +
                              line("Variable Min", fault) + line("Variable Unit", fault) +
                              line("Variable Default Value", fault) +
                              line("Variable Value", fault));
}

TEST_F(RecordChecksTest, allFaultsOfAnAlarmAreListedInTheOrderOfItsTable) {
    markAll({"txtAlmName", "txtAlmID", "txtAlmGroup", "txtAlmText", "txtAlmSetCEName",
             "txtAlmSetCEID", "txtAlmClrCEName", "txtAlmClrCEID"},
            "2");
    EXPECT_FALSE(records.lVerifyAlm());
    const QString fault = "Cannot contain space in between.";
    EXPECT_EQ(box.text(), line("Alarm Name", fault) + line("Alarm ID", fault) +
                              line("Alarm Group", fault) + line("Alarm Text", fault) +
                              line("Alarm Set CEName", fault) + line("Alarm Set CEID", fault) +
                              line("Alarm Clear CEName", fault) + line("Alarm Clear CEID", fault));
}

TEST_F(RecordChecksTest, allFaultsOfAnEventAreListedInTheOrderOfItsTable) {
    markAll({"txtEvtDesc", "txtEvtGroup", "txtEvtID", "txtEvtName"}, "3");
    EXPECT_FALSE(records.lVerifyEvt());
    const QString fault = "Must be numeric.";
    EXPECT_EQ(box.text(), line("Event Name", fault) + line("Event ID", fault) +
                              line("Event Group", fault) + line("Event Desc", fault));
}

TEST_F(RecordChecksTest, allFaultsOfAReportAreListedInTheOrderOfItsTable) {
    markAll({"txtRptDesc", "txtRptID", "txtRptName"}, "6");
    EXPECT_FALSE(records.lVerifyRpt());
    const QString fault = "Name already exists. Please use other name. ";
    EXPECT_EQ(box.text(), line("Report Name", fault) + line("Report ID", fault) +
                              line("Report Desc", fault) +
                              line("Report Variable List", "Must contain item."));
}

TEST_F(RecordChecksTest, aReportWithoutVariablesIsRefused) {
    EXPECT_FALSE(records.lVerifyRpt());
    EXPECT_EQ(box.text(), "[Report Variable List]: Must contain item.\r\n");
    giveReportAVariable();
    EXPECT_TRUE(records.lVerifyRpt());
    EXPECT_EQ(box.text(), "");
}

TEST_F(RecordChecksTest, twoFaultyFieldsGiveTwoLinesInTableOrder) {
    field("txtAlmText").setMarker("1");
    field("txtAlmID").setMarker("21");
    EXPECT_FALSE(records.lVerifyAlm());
    EXPECT_EQ(box.text(), line("Alarm ID", "Valid range is 1 to 2147483647. ") +
                              line("Alarm Text", "Cannot be empty string."));
}

TEST_F(RecordChecksTest, aMarkerThatIsNoCodeIsReportedByTheVerification) {
    field("txtEvtID").setMarker("abc");
    EXPECT_FALSE(errors.handle("txtEvtID_LostFocus", [&] { records.lVerifyEvt(); }))
        << "what could not be verified is not taken for valid";
    EXPECT_EQ(failures, QStringList("ERROR(13) [frmMain.lVerifyEvt.0]: Type mismatch"));
}

TEST_F(RecordChecksTest, whatWasFoundBeforeAFailureStands) {
    field("txtEvtName").setMarker("1");
    field("txtEvtID").setMarker("66");
    EXPECT_FALSE(errors.handle("txtEvtID_LostFocus", [&] { records.lVerifyEvt(); }));
    EXPECT_EQ(failures, QStringList("ERROR(9) [frmMain.lVerifyEvt.0]: Subscript out of range"));
    EXPECT_EQ(box.text(), line("Event Name", "Cannot be empty string."));
}

TEST_F(RecordChecksTest, everyFieldStartsWithoutException) {
    for (const form::Field* f : form.fields()) EXPECT_EQ(f->marker(), "0");
}

}  // namespace
}  // namespace stelvan::checks
