// In the window: minimum, maximum, value and default value against one another.
#include "tests/support/check_bench.h"

namespace stelvan::checks {
namespace {

using form::EditMode;

class ValueChecksTest : public test::CheckBench {
protected:
    form::Field& min = form[txtVarMin];
    form::Field& max = form[txtVarMax];
    form::Field& value = form[txtVarValue];
    form::Field& defValue = form[txtVarDefValue];

    void start(const QString& code) {
        begin(gem::CSTVDV, EditMode::Adding);
        chooseFormat(code);
    }
    QString markers() const {
        return min.marker() + ' ' + max.marker() + ' ' + value.marker() + ' ' + defValue.marker();
    }
    /// All other fields filled so that only the values decide.
    bool save() {
        form[txtVarName].setEnabled(false);
        form[txtVarID].setEnabled(false);
        form[txtVarGroup].setEnabled(false);
        form[txtVarDesc].setEnabled(false);
        return checks.checkForSave(gem::CSTVDV);
    }
    const QString kMinAboveMax = "Min value cannot be larger than Max value. ";
    const QString kOutside = "Value must fall whithin Min and Max. ";
};

TEST_F(ValueChecksTest, minimumAboveMaximumMarksBoth) {
    for (const char* code : {"B", "F4", "F8", "I1", "I2", "I4", "I8", "U1", "U2", "U4", "U8"}) {
        start(code);
        typeAndLeave(min, "10");
        EXPECT_EQ(markers(), "0 0 0 0") << code;
        typeAndLeave(max, "9");
        EXPECT_EQ(markers(), "38 38 0 0") << code;
        EXPECT_EQ(box.text(),
                  line("Variable Max", kMinAboveMax) + line("Variable Min", kMinAboveMax))
            << code;
        typeAndLeave(max, "10");
        EXPECT_EQ(markers(), "0 0 0 0") << code;
        EXPECT_EQ(box.text(), "") << code;
        min.setText("");
        max.setText("");
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(ValueChecksTest, theOtherLimitKeepsItsOwnFault) {
    start("U1");
    typeAndLeave(max, "-5");
    EXPECT_EQ(markers(), "0 7 0 0");
    typeAndLeave(min, "3");
    EXPECT_EQ(markers(), "38 7 0 0");
}

TEST_F(ValueChecksTest, aRangeFaultStandsBesideAPairInOrder) {
    start("U1");
    typeAndLeave(max, "400");
    typeAndLeave(min, "300");
    EXPECT_EQ(markers(), "7 7 0 0");
}

TEST_F(ValueChecksTest, nothingIsComparedUntilBothLimitsAreNumbers) {
    start("U4");
    typeAndLeave(min, "10");
    EXPECT_EQ(markers(), "0 0 0 0");
    typeAndLeave(max, "abc");
    EXPECT_EQ(markers(), "0 3 0 0");
    leave(min);
    EXPECT_EQ(markers(), "0 3 0 0");
}

TEST_F(ValueChecksTest, valuesOutsideTheirLimitsAreMarked) {
    start("I2");
    typeAndLeave(min, "-5");
    typeAndLeave(max, "5");
    for (form::Field* content : {&value, &defValue}) {
        typeAndLeave(*content, "-6");
        EXPECT_EQ(content->marker(), "39");
        typeAndLeave(*content, "-5");
        EXPECT_EQ(content->marker(), "0");
        typeAndLeave(*content, "5");
        EXPECT_EQ(content->marker(), "0");
        typeAndLeave(*content, "6");
        EXPECT_EQ(content->marker(), "39");
    }
    EXPECT_EQ(box.text(),
              line("Variable Default Value", kOutside) + line("Variable Value", kOutside));
}

TEST_F(ValueChecksTest, aValuesOwnFaultComesBeforeItsLimits) {
    start("U1");
    typeAndLeave(max, "5");
    typeAndLeave(value, "300");
    EXPECT_EQ(value.marker(), "7");
    typeAndLeave(value, "6");
    EXPECT_EQ(value.marker(), "39");
}

TEST_F(ValueChecksTest, oneLimitAloneBinds) {
    start("U4");
    typeAndLeave(max, "10");
    typeAndLeave(value, "11");
    EXPECT_EQ(value.marker(), "39");
    typeAndLeave(value, "10");
    EXPECT_EQ(value.marker(), "0");
}

TEST_F(ValueChecksTest, aNewLimitJudgesValuesTypedBeforeIt) {
    for (const char* code : {"U4", "U8", "F8"}) {
        start(code);
        typeAndLeave(value, "50");
        typeAndLeave(defValue, "5");
        typeAndLeave(max, "10");
        EXPECT_EQ(markers(), "0 0 39 0") << code;
        EXPECT_EQ(box.text(), line("Variable Value", kOutside)) << code;
        typeAndLeave(max, "100");
        EXPECT_EQ(markers(), "0 0 0 0") << code;
        EXPECT_EQ(box.text(), "") << code;
        max.setText("");
        value.setText("");
        defValue.setText("");
    }
}

TEST_F(ValueChecksTest, clearingAFaultyFieldKeepsItsException) {
    start("U1");
    for (form::Field* f : {&min, &max, &value, &defValue}) {
        typeAndLeave(*f, "300");
        EXPECT_EQ(f->marker(), "7");
        typeAndLeave(*f, "");
        EXPECT_EQ(f->marker(), "7");
        typeAndLeave(*f, "  ");
        EXPECT_EQ(f->marker(), "7");
    }
    EXPECT_FALSE(save());
    for (form::Field* f : {&min, &max, &value, &defValue}) typeAndLeave(*f, "3");
    EXPECT_EQ(markers(), "0 0 0 0");
    EXPECT_TRUE(save());
}

TEST_F(ValueChecksTest, limitsBeyond32BitsCannotBeComparedButCanBeSaved) {
    for (const char* code : {"U8", "I8"}) {
        start(code);
        failures.clear();
        typeAndLeave(min, "0");
        EXPECT_EQ(failures, QStringList());
        typeAndLeave(max, "9007199254740993");
        EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.txtVarMax_LostFocus.0]: Overflow"))
            << code;
        leave(min);
        EXPECT_EQ(failures.size(), 2);
        EXPECT_EQ(failures.last(), "ERROR(6) [frmMain.txtVarMin_LostFocus.0]: Overflow");
        EXPECT_EQ(markers(), "0 0 0 0");
        failures.clear();
        EXPECT_TRUE(save()) << code;
        EXPECT_EQ(failures, QStringList({"ERROR(6) [frmMain.txtVarMin_LostFocus.0]: Overflow",
                                         "ERROR(6) [frmMain.txtVarMax_LostFocus.0]: Overflow"}));
        min.setText("");
        max.setText("");
    }
}

TEST_F(ValueChecksTest, valuesCompareExactlyWithLimitsBeyond32Bits) {
    start("U8");
    max.setText("18446744073709551615");
    typeAndLeave(value, "18446744073709551615");
    EXPECT_EQ(value.marker(), "0");
    typeAndLeave(value, "18446744073709551616");
    EXPECT_EQ(value.marker(), "39");
    typeAndLeave(value, "0");
    EXPECT_EQ(value.marker(), "0");
    EXPECT_EQ(failures, QStringList());
}

TEST_F(ValueChecksTest, anOverflowIsOneBoxAndLeavesMarkerAndList) {
    start("U4");
    typeAndLeave(value, "abc");
    const QString listed = box.text();
    typeAndLeave(value, "2147483648");
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.lVarVerifyValue.0]: Overflow"));
    EXPECT_EQ(value.marker(), "3");
    EXPECT_EQ(box.text(), listed);
}

TEST_F(ValueChecksTest, aValueThatOverflowsIsNotSaved) {
    start("U4");
    value.setText("2147483648");
    EXPECT_FALSE(save());
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.lVarVerifyValue.0]: Overflow"));
    EXPECT_EQ(value.marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(ValueChecksTest, atTheSaveABlankLimitCountsAsZero) {
    for (const char* code : {"B", "F4", "I4", "U4", "U8"}) {
        start(code);
        min.setText("5");
        EXPECT_FALSE(save()) << code;
        EXPECT_EQ(markers(), "38 0 0 0") << code;
        min.setText("0");
        EXPECT_TRUE(save()) << code;
        EXPECT_EQ(markers(), "0 0 0 0") << code;
        min.setText("");
    }
    start("I4");
    max.setText("-5");
    EXPECT_FALSE(save());
    EXPECT_EQ(markers(), "0 38 0 0");
    min.setText("-10");
    EXPECT_TRUE(save());
    EXPECT_EQ(markers(), "0 0 0 0");
}

TEST_F(ValueChecksTest, aFaultAgainstABlankLimitStaysWhileItHolds) {
    start("U4");
    typeAndLeave(min, "5");
    EXPECT_EQ(markers(), "0 0 0 0");
    EXPECT_FALSE(save());
    leave(min);
    EXPECT_EQ(markers(), "38 0 0 0");
    leave(max);
    EXPECT_EQ(markers(), "38 0 0 0");
}

TEST_F(ValueChecksTest, aFaultAgainstABlankLimitFallsWithEitherField) {
    start("U4");
    const auto refuse = [&] {
        min.setText("5");
        max.setText("");
        EXPECT_FALSE(save());
        EXPECT_EQ(markers(), "38 0 0 0");
    };
    refuse();
    typeAndLeave(max, "9");
    EXPECT_EQ(markers(), "0 0 0 0");
    refuse();
    typeAndLeave(min, "");
    EXPECT_EQ(markers(), "0 0 0 0");
    refuse();
    typeAndLeave(min, "0");
    EXPECT_EQ(markers(), "0 0 0 0");
    refuse();
    typeAndLeave(max, "abc");
    EXPECT_EQ(markers(), "0 3 0 0");
}

TEST_F(ValueChecksTest, atTheSaveValuesAreJudgedByTheZeroToBeStored) {
    start("I4");
    min.setText("-10");
    value.setText("5");
    defValue.setText("-5");
    EXPECT_FALSE(save());
    EXPECT_EQ(markers(), "0 0 39 0");
}

TEST_F(ValueChecksTest, textFormatsKnowNoLimits) {
    start("A");
    typeAndLeave(value, "99999999999999999999");
    typeAndLeave(defValue, "any text");
    EXPECT_EQ(markers(), "0 0 0 0");
    EXPECT_TRUE(save());
}

TEST_F(ValueChecksTest, gemVariablesAreJudgedByTheLimitsTheyShow) {
    begin(gem::GEMVEC, EditMode::Editing);
    for (const char* name : {"txtVarName", "txtVarID", "txtVarGroup", "txtVarDesc", "txtVarMin",
                             "txtVarMax", "txtVarUnit"}) {
        field(name).setLocked(true);
    }
    form[cmbVarFormat].setEnabled(false);
    form[txtVarID].setText("5");
    form[cmbVarFormat].setText("U1");
    min.setText("1");
    max.setText("5");
    value.setText("5");
    EXPECT_TRUE(checks.checkForSave(gem::GEMVEC));
    typeAndLeave(value, "6");
    EXPECT_EQ(value.marker(), "39");
    EXPECT_FALSE(checks.checkForSave(gem::GEMVEC));
    typeAndLeave(value, "x");
    EXPECT_EQ(value.marker(), "3");
    EXPECT_EQ(box.text(), line("Variable Value", "Must be numeric."));
}

TEST_F(ValueChecksTest, aBlankLimitOfAGemVariableIsNoZero) {
    begin(gem::GEMVEC, EditMode::Editing);
    for (form::Field* f : form.fields()) f->setLocked(f != &value && f != &defValue);
    form[cmbVarFormat].setText("I2");
    max.setText("100");
    value.setText("-5");
    EXPECT_TRUE(checks.checkForSave(gem::GEMVEC));
    EXPECT_EQ(box.text(), "");
}

TEST_F(ValueChecksTest, aChangeOfFormatComparesTheLimitsAnew) {
    start("U4");
    typeAndLeave(min, "10");
    typeAndLeave(max, "9");
    chooseFormat("I4");
    EXPECT_EQ(markers(), "38 38 0 0");
    EXPECT_EQ(box.text(), line("Variable Max", kMinAboveMax) + line("Variable Min", kMinAboveMax));
}

TEST_F(ValueChecksTest, aLimitThatOverflowsEndsItsHandler) {
    start("U4");
    typeAndLeave(value, "5");
    box.lLogError("Seen", "before");
    typeAndLeave(min, "2147483648");
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.lVarVerifyValue.0]: Overflow"));
    EXPECT_EQ(markers(), "0 0 0 0");
    EXPECT_EQ(box.text(), line("Seen", "before"));  // nothing was verified anew
}

}  // namespace
}  // namespace stelvan::checks
