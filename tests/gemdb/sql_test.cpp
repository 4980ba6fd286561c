// gemdb sql: rows as JSON lines, and all statements of a call or none.
#include <filesystem>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

TEST_F(CommandTest, SqlPrintsTheRowsOfASelectAsJsonLines) {
    EXPECT_EQ(select("SELECT var_id, var_name FROM secs_gemvar WHERE var_id = 2"),
              std::vector<std::string>{R"({"var_id":2,"var_name":"ControlState"})"});
    EXPECT_TRUE(select("select * from secs_gemvar where var_id = -1").empty());
    EXPECT_EQ(select(" select* from secs_gemvar").size(), 42U);
}

TEST_F(CommandTest, SqlReadsAFileThatMayNotBeWritten) {
    fs::permissions(file_, fs::perms::owner_read);
    EXPECT_EQ(select("SELECT MAX(evt_id) FROM secs_gemevent").size(), 1U);
}

TEST_F(CommandTest, SqlWritesAllStatementsOfACall) {
    const ProgramRun run =
        runGemdb({"sql", file_, "UPDATE secs_gemevent SET evt_group = 'Changed' WHERE evt_id = 1",
                  "DELETE FROM secs_def_evt_rpt WHERE evt_id = 1",
                  "SELECT evt_group FROM secs_gemevent WHERE evt_id = 1"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "{\"evt_group\":\"Changed\"}\n");
    EXPECT_EQ(select("SELECT evt_group FROM secs_gemevent WHERE evt_id = 1").front(),
              R"({"evt_group":"Changed"})");
    EXPECT_TRUE(select("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 1").empty());
}

TEST_F(CommandTest, SqlLeavesNothingOfACallWhoseLaterStatementFails) {
    const std::string before = readFile(file_);
    expectFailure({"sql", file_, "UPDATE secs_gemevent SET evt_group = 'Changed' WHERE evt_id = 1",
                   "INSERT INTO secs_gemevent (evt_id, evt_name) VALUES (1, 'Twice')"});
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(CommandTest, SqlPrintsNothingOfACallThatFails) {
    const ProgramRun run =
        runGemdb({"sql", file_, "UPDATE secs_gemevent SET evt_group = 'x' WHERE evt_id = 1",
                  "SELECT * FROM secs_gemevent", "DELETE FROM no_such_table"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
}

TEST_F(CommandTest, SqlNamesTheStatementOfSeveralThatFailed) {
    const std::string good = "SELECT evt_id FROM secs_gemevent WHERE evt_id = 1";
    expectFailure({"sql", file_, good, "DELETE * FROM no_such_table", good},
                  "statement 2 (DELETE * FROM no_such_table): The Microsoft Jet");
    expectFailure({"sql", file_, good, good, "SELECT\nnothing FROM secs_gemvar"},
                  "statement 3 (SELECT nothing FROM secs_gemvar): No value given");
}

TEST_F(CommandTest, SqlThatIsAloneNeedsNoNumber) {
    const ProgramRun run = runGemdb({"sql", file_, "DELETE FROM no_such_table"});
    EXPECT_EQ(run.err.find("statement"), std::string::npos) << run.err;
}

TEST_F(CommandTest, SqlThatCannotBeRunIsOneLineAndStatusTwo) {
    expectFailure({"sql", file_, "SELECT nothing FROM secs_gemvar"});
    expectFailure({"sql", file_, "nonsense"});
    expectFailure({"sql", file_}, "STATEMENT");
}

}  // namespace
}  // namespace stelvan::test
