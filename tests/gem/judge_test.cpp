// The rules of a record without a window: each field by its check, and what falls with it.
#include "gem/judge.h"

#include <gtest/gtest.h>

#include <set>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

using enum Control;

class OthersStub final : public Others {
public:
    std::set<std::string> ids;
    std::set<std::string> names;
    bool unreachable = false;

    bool idExists(Kind, const std::string& id) override { return ask(ids, id); }
    bool nameExists(Kind, const std::string& name) override { return ask(names, name); }

private:
    [[nodiscard]] bool ask(const std::set<std::string>& known, const std::string& wanted) const {
        if (unreachable) throw base::RunTimeError(-2147467259, "Could not find file.");
        return known.contains(wanted);
    }
};

class JudgeTest : public ::testing::Test {
protected:
    OthersStub others;

    int faultOf(Record& record, Control field, const char* text, Moment moment = Moment::Leaving) {
        record[field].text = text;
        judge(record, field, moment, others);
        return record[field].fault;
    }
};

TEST_F(JudgeTest, identifiersStartAtTheirLowest) {
    Record alarm(CSTALM);
    EXPECT_EQ(faultOf(alarm, txtAlmID, "0"), ALM_ID_INVALID_RANGE);
    EXPECT_EQ(faultOf(alarm, txtAlmID, "1"), NO_EXCEPTION);
    Record event(CSTEVT);
    EXPECT_EQ(faultOf(event, txtEvtID, "100"), EVT_ID_INVALID_RANGE);
    EXPECT_EQ(faultOf(event, txtEvtID, "101"), NO_EXCEPTION);
    EXPECT_EQ(faultOf(event, txtEvtID, "  "), NULL_STRING);
    EXPECT_EQ(faultOf(event, txtEvtID, "1 01"), SPACE_BETWEEN);
    EXPECT_EQ(faultOf(event, txtEvtID, "101.0"), REQUIRE_INTEGER);
}

TEST_F(JudgeTest, onlyANewIdentifierMustBeFree) {
    others.ids = {"101"};
    Record variable(CSTVSV);
    EXPECT_EQ(faultOf(variable, txtVarID, " 101 "), NO_EXCEPTION);
    variable.adding = true;
    EXPECT_EQ(faultOf(variable, txtVarID, " 101 "), ID_EXIST);
    EXPECT_EQ(faultOf(variable, txtVarID, "102"), NO_EXCEPTION);
}

TEST_F(JudgeTest, aRecordKeepsItsOwnNameInWhateverCase) {
    others.names = {"Pump", "PUMP", "Valve"};
    Record event(CSTEVT);
    event.loadedName = "Pump";
    EXPECT_EQ(faultOf(event, txtEvtName, " PUMP "), NO_EXCEPTION);
    EXPECT_EQ(faultOf(event, txtEvtName, "Valve"), NAME_EXIST);
    event.adding = true;
    EXPECT_EQ(faultOf(event, txtEvtName, "Pump"), NAME_EXIST);
    EXPECT_EQ(faultOf(event, txtEvtName, "Lot Start"), SPACE_BETWEEN);
}

TEST_F(JudgeTest, aQuestionThatCannotBeAskedIsAFailureAndTheFaultStays) {
    others.unreachable = true;
    Record report(CSTRPT);
    report.adding = true;
    report[txtRptName].fault = NULL_STRING;
    report[txtRptName].text = "Start";
    EXPECT_THROW(judge(report, txtRptName, Moment::Leaving, others), base::RunTimeError);
    EXPECT_EQ(report[txtRptName].fault, NULL_STRING);
}

TEST_F(JudgeTest, aClosedFieldIsAlwaysValid) {
    Record variable(GEMSDV);
    variable[txtVarID].open = false;
    variable[txtVarID].fault = VAR_ID_INVALID_RANGE;
    EXPECT_EQ(faultOf(variable, txtVarID, "7"), NO_EXCEPTION);
}

TEST_F(JudgeTest, aFormatMustBeOfferedAndAChildCannotBeAList) {
    Record variable(CSTVSV);
    EXPECT_EQ(faultOf(variable, cmbVarFormat, ""), NULL_STRING);
    EXPECT_EQ(faultOf(variable, cmbVarFormat, "L"), NO_EXCEPTION);
    variable.childOfList = true;
    EXPECT_EQ(faultOf(variable, cmbVarFormat, " l "), VAR_INVALID_FORMAT);
    EXPECT_EQ(faultOf(variable, cmbVarFormat, "U4"), NO_EXCEPTION);
    variable.formatKnown = false;
    EXPECT_EQ(faultOf(variable, cmbVarFormat, "U9"), VAR_INVALID_FORMAT);
}

class LimitsTest : public JudgeTest {
protected:
    Record variable{CSTVSV};

    void fill(const char* format, const char* min, const char* max, const char* value) {
        variable[cmbVarFormat].text = format;
        variable[txtVarMin].text = min;
        variable[txtVarMax].text = max;
        variable[txtVarValue].text = value;
        for (const Control field : {txtVarMin, txtVarMax, txtVarValue, txtVarDefValue})
            variable[field].fault = NO_EXCEPTION;
    }
    int judged(Control field, Moment moment = Moment::Leaving) {
        judge(variable, field, moment, others);
        return variable[field].fault;
    }
};

TEST_F(LimitsTest, aMinimumAboveTheMaximumMarksBothAndBothFallTogether) {
    fill("U1", "20", "10", "");
    EXPECT_EQ(judged(txtVarMin), VAR_MIN_GT_MAX);
    EXPECT_EQ(variable[txtVarMax].fault, VAR_MIN_GT_MAX);
    variable[txtVarMax].text = "20";
    EXPECT_EQ(judged(txtVarMax), NO_EXCEPTION);
    EXPECT_EQ(variable[txtVarMin].fault, NO_EXCEPTION);
}

TEST_F(LimitsTest, theOthersOwnFaultStands) {
    fill("U1", "20", "300", "");
    EXPECT_EQ(judged(txtVarMax), SECS_U1_INVALID_RANGE);
    EXPECT_EQ(judged(txtVarMin), NO_EXCEPTION);
    EXPECT_EQ(variable[txtVarMax].fault, SECS_U1_INVALID_RANGE);
}

TEST_F(LimitsTest, aValueIsHeldAgainstLimitsThatChangeAfterIt) {
    fill("I4", "0", "10", "11");
    EXPECT_EQ(judged(txtVarValue), VAR_NOT_IN_MINMAX);
    variable[txtVarMax].text = "11";
    EXPECT_EQ(judged(txtVarMax), NO_EXCEPTION);
    EXPECT_EQ(variable[txtVarValue].fault, NO_EXCEPTION);
}

TEST_F(LimitsTest, aComparisonBeyondThirtyTwoBitsFailsAfterTheValuesWereJudged) {
    fill("U8", "0", "18446744073709551615", "5");
    variable[txtVarValue].fault = VAR_NOT_IN_MINMAX;
    EXPECT_THROW(judge(variable, txtVarMax, Moment::Leaving, others), base::RunTimeError);
    EXPECT_EQ(variable[txtVarValue].fault, NO_EXCEPTION) << "no old fault is left behind";
    EXPECT_EQ(variable[txtVarMax].fault, NO_EXCEPTION);
}

TEST_F(LimitsTest, aBlankLimitCountsAsZeroAtTheSaveOnly) {
    fill("I2", "5", "", "");
    EXPECT_EQ(judged(txtVarMin), NO_EXCEPTION);
    EXPECT_EQ(judged(txtVarMin, Moment::Saving), VAR_MIN_GT_MAX);
    EXPECT_EQ(variable.judgedAgainstBlank, txtVarMin);
    variable[txtVarMin].text = "";
    EXPECT_EQ(judged(txtVarMax), NO_EXCEPTION);
    EXPECT_EQ(variable[txtVarMin].fault, NO_EXCEPTION) << "it falls with the other field left";
}

TEST_F(LimitsTest, blankAndUncheckedTextsKeepTheirFault) {
    fill("U1", "", "", " ");
    variable[txtVarValue].fault = SECS_U1_INVALID_RANGE;
    EXPECT_EQ(judged(txtVarValue), SECS_U1_INVALID_RANGE);
    fill("L", "", "", "x");
    variable[txtVarValue].fault = SECS_U1_INVALID_RANGE;
    EXPECT_EQ(judged(txtVarValue), SECS_U1_INVALID_RANGE);
}

TEST_F(LimitsTest, aChangeOfFormatJudgesEveryOpenField) {
    fill("U1", "300", "400", "500");
    judgeAnew(variable);
    for (const Control field : {txtVarMin, txtVarMax, txtVarValue})
        EXPECT_EQ(variable[field].fault, SECS_U1_INVALID_RANGE) << nameOf(field);
    variable[cmbVarFormat].text = "U2";
    judgeAnew(variable);
    EXPECT_EQ(variable[txtVarMin].fault, NO_EXCEPTION);
    EXPECT_EQ(variable[txtVarValue].fault, VAR_NOT_IN_MINMAX);
    variable[txtVarValue].open = false;
    judgeAnew(variable);
    EXPECT_EQ(variable[txtVarValue].fault, NO_EXCEPTION) << "what is closed is valid";
}

TEST_F(LimitsTest, oneValueThatOverflowsDoesNotKeepTheOthersFromBeingJudged) {
    fill("U4", "99999999999", "-5", "x");
    EXPECT_THROW(judgeAnew(variable), base::RunTimeError);
    EXPECT_EQ(variable[txtVarMax].fault, SECS_U4_INVALID_RANGE);
    EXPECT_EQ(variable[txtVarValue].fault, REQUIRE_NUMERIC);
}

TEST_F(LimitsTest, anOverflowBearsTheNameOfTheCheckInWhichItArose) {
    variable[txtVarValue].text = "99999999999";
    try {
        (void)lVarVerifyValue(variable, txtVarValue, "U4");
        ADD_FAILURE();
    } catch (const base::RunTimeError& failure) {
        EXPECT_EQ(failure.number(), 6);
        EXPECT_EQ(failure.source(), "frmMain.lVarVerifyValue");
    }
}

}  // namespace
}  // namespace stelvan::gem
