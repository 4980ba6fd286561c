#include "base/error_info.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "tests/support/models.h"

namespace stelvan::base {
namespace {

class ErrorInfoTest : public ::testing::Test {
protected:
    std::vector<std::string> shown;
    ErrorInfo errors{[this](const std::string& line) { shown.push_back(line); }};
    test::ScratchDir scratch;

    static std::string contentOf(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }
};

TEST_F(ErrorInfoTest, reportNamesNumberSourceLineAndDescription) {
    errors.ReportErr("frmMain.lLoadData", 3265, "Item cannot be found.", 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0], "ERROR(3265) [frmMain.lLoadData.0]: Item cannot be found.");
}

TEST_F(ErrorInfoTest, providerNumbersAreShownWhole) {
    errors.ReportErr("frmMain.lLoadData", -2147217900, "x", 12);
    EXPECT_EQ(shown.at(0), "ERROR(-2147217900) [frmMain.lLoadData.12]: x");
}

TEST_F(ErrorInfoTest, logIsOffAndNamedAppLogAtFirst) {
    EXPECT_FALSE(errors.LogToFile());
    EXPECT_EQ(errors.LogFilename(), "app.log");
}

TEST_F(ErrorInfoTest, nothingIsLoggedWhileTheLogIsOff) {
    const std::string log = scratch.path() / "app.log";
    errors.LogFilename(log);
    errors.ReportErr("frmMain.a", 1, "first", 0);
    EXPECT_FALSE(std::filesystem::exists(log));
}

TEST_F(ErrorInfoTest, logHoldsOnlyTheLatestReport) {
    const std::string log = scratch.path() / "app.log";
    errors.LogFilename(log);
    errors.LogToFile(true);
    errors.ReportErr("frmMain.a", 1, "the first and by far the longer of the two", 0);
    errors.ReportErr("frmMain.b", 2, "second", 0);
    EXPECT_EQ(contentOf(log), "ERROR(2) [frmMain.b.0]: second\n");
    EXPECT_EQ(shown.size(), 2u);
}

TEST_F(ErrorInfoTest, aLogThatCannotBeWrittenLeavesReportErr) {
    errors.LogFilename(scratch.path() / "no" / "such" / "app.log");
    errors.LogToFile(true);
    EXPECT_THROW(errors.ReportErr("frmMain.a", 1, "first", 0), RunTimeError);
    EXPECT_TRUE(shown.empty());
}

TEST_F(ErrorInfoTest, theTrapShowsReportAndLogFailureOnceEach) {
    const std::string log = scratch.path() / "no" / "app.log";
    errors.LogFilename(log);
    errors.LogToFile(true);
    EXPECT_FALSE(errors.handle("lLoadData", [] { throw RunTimeError(3265, "D"); }));
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0], "ERROR(3265) [frmMain.lLoadData.0]: D");
    EXPECT_EQ(shown[1], "ERROR(75) [frmMain.lLoadData.0]: Cannot write the error log: " + log);
}

TEST_F(ErrorInfoTest, theTrapReportsUnderWindowAndProcedureAndClearsTheFailure) {
    EXPECT_FALSE(errors.handle("frmGEMDatabase", "cmdLoad_Click", [] { throw objectNotSet(); }));
    EXPECT_EQ(shown.at(0), "ERROR(91) [frmGEMDatabase.cmdLoad_Click.0]: Object not set");
}

TEST_F(ErrorInfoTest, whatWasDecidedBeforeTheFailureStands) {
    bool valid = true;
    errors.handle("lVerifyVar", [&] {
        valid = false;
        throw typeMismatch();
    });
    EXPECT_FALSE(valid);
}

TEST_F(ErrorInfoTest, aBodyThatEndsWellReportsNothing) {
    EXPECT_TRUE(errors.handle("lVerifyVar", [] {}));
    EXPECT_TRUE(shown.empty());
}

TEST_F(ErrorInfoTest, aFailureFliesToItsHandlerAndIsReportedUnderTheInnermostProcedure) {
    bool wentOn = false;
    EXPECT_FALSE(errors.handle("tvwSECSItem_NodeClick", [&] {
        trap("lUpdatePropInfo", [&] {
            trap("lGetRecordSet", [] { throw RunTimeError(3021, "No current record."); });
            wentOn = true;
        });
        wentOn = true;
    }));
    EXPECT_FALSE(wentOn) << "nobody takes a missing answer for an answer";
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0], "ERROR(3021) [frmMain.lGetRecordSet.0]: No current record.");
}

TEST_F(ErrorInfoTest, whatAProcedureAnswersComesThroughItsTrap) {
    EXPECT_EQ(trap("lGetNextID", [] { return std::string("101"); }), "101");
    int number = 1;
    int& same = trap("lCheckDuplicate", [&]() -> int& { return number; });
    EXPECT_EQ(&same, &number);
}

TEST_F(ErrorInfoTest, nothingIsShownBeforeEverythingInBetweenIsUnwound) {
    bool unitIsOpen = false;
    struct Unit {
        bool& open;
        explicit Unit(bool& isOpen) : open(isOpen) { open = true; }
        ~Unit() { open = false; }
    };
    bool openWhileShown = true;
    ErrorInfo watching([&](const std::string&) { openWhileShown = unitIsOpen; });
    watching.handle("cmdSave_Click", [&] {
        const Unit unit(unitIsOpen);
        trap("lExecCommand", [] { throw objectNotSet(); });
    });
    EXPECT_FALSE(openWhileShown);
}

TEST_F(ErrorInfoTest, failuresOfTheLanguageAreReportedToo) {
    errors.handle("a", [] { throw std::out_of_range("vector"); });
    errors.handle("b", [] { throw std::bad_alloc(); });
    EXPECT_EQ(shown.at(0), "ERROR(51) [frmMain.a.0]: Internal error: vector");
    EXPECT_EQ(shown.at(1), "ERROR(7) [frmMain.b.0]: Out of memory");
}

}  // namespace
}  // namespace stelvan::base
