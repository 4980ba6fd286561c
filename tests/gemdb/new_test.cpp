// gemdb new: a model of one's own, with settings that point into its own
// folder.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

TEST(NewModel, IsAWritableCopyWhoseSettingsNameFilesThatExist) {
    const ScratchDir scratch;
    const fs::path folder = scratch.path() / "line 3" / "etcher";
    const ProgramRun run = runGemdb({"new", folder});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string model = folder / "gem.mdb";
    EXPECT_EQ(run.out, model + "\n");
    for (const char* setting :
         {"GEMDatabase", "SECSLogFile", "SECSILogPath", "SECSDictionaryFile"}) {
        const std::string sql = std::string(
                                    "SELECT set_value, set_defaultval FROM "
                                    "secs_setting WHERE set_field = '") +
                                setting + "'";
        const std::string row = runGemdb({"sql", model, sql}).out;
        const std::string value = row.substr(14, row.find('"', 14) - 14);
        EXPECT_TRUE(fs::exists(value)) << setting << ": " << row;
    }
    EXPECT_EQ(
        runGemdb({"sql", model, "UPDATE secs_gemevent SET evt_enable = 0 WHERE evt_id = 1"}).status,
        0);
    EXPECT_EQ(runGemdb({"check", "--structure", model}).status, 0);
}

TEST(NewModel, DemoHoldsTheWetBench) {
    const ScratchDir scratch;
    ASSERT_EQ(runGemdb({"new", "--demo", scratch.path()}).status, 0);
    const std::string model = scratch.path() / "gem.mdb";
    EXPECT_EQ(splitLines(runGemdb({"sql", model,
                                   "SELECT * FROM secs_cusvar WHERE var_name = 'HfTemperature'"})
                             .out)
                  .size(),
              1U);
}

TEST(NewModel, NeverReplacesAModel) {
    const ScratchDir scratch;
    ASSERT_EQ(runGemdb({"new", scratch.path()}).status, 0);
    const std::string before = readFile(scratch.path() / "gem.mdb");
    const ProgramRun again = runGemdb({"new", "--demo", scratch.path()});
    EXPECT_EQ(again.status, 2);
    EXPECT_EQ(splitLines(again.err).size(), 1U);
    EXPECT_EQ(readFile(scratch.path() / "gem.mdb"), before);
}

TEST(NewModel, FailsClearlyWhereTheFolderCannotBeMade) {
    const ScratchDir scratch;
    const ProgramRun run = runGemdb({"new", "/proc/no-such-folder"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
}

}  // namespace
}  // namespace stelvan::test
