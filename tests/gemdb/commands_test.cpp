// What gemdb promises to whoever calls it: output, exit status, and one line for a failure.
#include <algorithm>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

TEST_F(CommandTest, TablesPrintsTheNamesInAlphabeticalOrder) {
    const ProgramRun run = runGemdb({"tables", file_});
    EXPECT_EQ(run.status, 0);
    const std::vector<std::string> names = splitLines(run.out);
    EXPECT_EQ(names.size(), 10U);
    EXPECT_EQ(names.front(), "secs_alarm");
    EXPECT_TRUE(std::ranges::is_sorted(names));
}

TEST_F(CommandTest, DumpOfOneTableKnowsItInAnyLetterCase) {
    const ProgramRun run = runGemdb({"dump", file_, "SECS_Setting"});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::vector<std::string> lines = splitLines(run.out);
    EXPECT_EQ(lines.size(), 31U);
    EXPECT_TRUE(lines[0].starts_with(R"({"table":"secs_setting","row":{"set_field":)")) << lines[0];
}

TEST_F(CommandTest, SchemaOfOneTableIsOneLine) {
    const ProgramRun run = runGemdb({"schema", file_, "secs_report"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out).size(), 1U);
}

TEST_F(CommandTest, FailuresAreOneLineAndStatusTwo) {
    expectFailure({"dump", file_, "no_such_table"}, "no_such_table");
    expectFailure({"schema", file_, "no_such_table"}, "no_such_table");
    expectFailure({"tables", folder_.path() / "absent.mdb"}, "absent.mdb");
    expectFailure({"tables", folder_.path().string()});
}

TEST_F(CommandTest, MisuseIsOneLineAndStatusTwo) {
    expectFailure({});
    expectFailure({"dump"}, "FILE");
    expectFailure({"frobnicate", file_});
}

TEST_F(CommandTest, ATableMayBeCalledLikeACommand) {
    expectFailure({"dump", file_, "tables"}, "tables");
}

TEST_F(CommandTest, HelpAndVersionSucceed) {
    EXPECT_EQ(runGemdb({"--help"}).status, 0);
    EXPECT_EQ(runGemdb({"dump", "--help"}).status, 0);
    EXPECT_EQ(runGemdb({"--version"}).out, "1.0.0\n");
}

TEST_F(CommandTest, OutputThatCannotBeWrittenIsAFailure) {
    const ProgramRun run =
        runProgram("/bin/sh", {"-c", STELVAN_BINARY_DIR "/gemdb dump '" + file_ + "' > /dev/full"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
}

TEST_F(CommandTest, ReadingLeavesTheFileAsItWas) {
    const std::string before = readFile(file_);
    (void)runGemdb({"dump", file_});
    (void)runGemdb({"schema", file_});
    EXPECT_EQ(readFile(file_), before);
}

}  // namespace
}  // namespace stelvan::test
