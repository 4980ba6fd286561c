#include "gemdb/working.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/run_gemdb.h"
#include "tests/support/scratch_dir.h"

namespace stelvan::test {
namespace {

using gemdb::Working;
using std::chrono::milliseconds;

class WorkingTest : public ::testing::Test {
protected:
    ScratchDir folder;
    std::string name = (folder.path() / "screen").string();
    std::FILE* screen = std::fopen(name.c_str(), "w");
    ~WorkingTest() override { std::fclose(screen); }

    std::string shown() const {
        std::fflush(screen);
        return readFile(name);
    }
    /// Until something is shown; fails where that never comes.
    void waitForLine() const {
        for (int tries = 0; tries < 1000 && shown().empty(); ++tries)
            std::this_thread::sleep_for(milliseconds(5));
        ASSERT_NE(shown(), "");
    }
};

TEST_F(WorkingTest, TellsTheVerbAndHowFarItIsAndLeavesNothingBehind) {
    {
        const Working working("gemdb check", screen, milliseconds(0));
        model::tell(Working::progress(), "checking alarms", 1, 4);
        for (int tries = 0; tries < 1000 && shown().find("25 %") == std::string::npos; ++tries)
            std::this_thread::sleep_for(milliseconds(5));
        EXPECT_NE(shown().find("gemdb check: checking alarms, 25 %"), std::string::npos) << shown();
    }
    EXPECT_TRUE(shown().ends_with("\r\033[K")) << shown();
}

TEST_F(WorkingTest, MakesRoomForWhatIsPrinted) {
    Working working("gemdb check", screen, milliseconds(0));
    waitForLine();
    working.makeRoom();
    EXPECT_NE(shown().find("s)\r\033[K"), std::string::npos) << shown();
}

TEST_F(WorkingTest, ShortWorkSaysNothing) {
    { const Working working("gemdb check", screen, std::chrono::hours(1)); }
    EXPECT_EQ(shown(), "");
}

TEST_F(WorkingTest, WithoutATerminalNothingIsAskedFor) {
    const Working working("gemdb check", nullptr);
    EXPECT_FALSE(Working::progress());
}

}  // namespace
}  // namespace stelvan::test
