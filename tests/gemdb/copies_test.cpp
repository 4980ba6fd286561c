// gemdb copies: lists the earlier copies of a model and puts one back.
#include <cstdlib>

#include "model/core/kept_copies.h"
#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class Copies : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ::setenv("XDG_STATE_HOME", (folder_.path() / "state").c_str(), 1);
        ::setenv("TZ", "UTC", 1);
    }
    void TearDown() override {
        ::unsetenv("XDG_STATE_HOME");
        ::unsetenv("TZ");
    }
    void keep(int hours) const {
        const std::chrono::sys_seconds now(std::chrono::seconds(1'773'479'700) +
                                           std::chrono::hours(hours));
        (void)model::KeptCopies(model::KeptCopies::folderOfUser(), [&] { return now; }).keep(file_);
    }
    void change(const std::string& text) const {
        ASSERT_EQ(
            runGemdb({"sql", file_, "UPDATE secs_report SET rpt_desc = '" + text + "'"}).status, 0);
    }
};

TEST_F(Copies, AreListedTheNewestFirstAndOneIsPutBack) {
    EXPECT_EQ(runGemdb({"copies", file_}).out, "");
    const std::string first = readFile(file_);
    keep(0);
    change("second");
    keep(1);
    const std::string size = std::to_string(fs::file_size(file_)) + " bytes\n";
    EXPECT_EQ(runGemdb({"copies", file_}).out,
              "1  2026-03-14 10:15:00  " + size + "2  2026-03-14 09:15:00  " + size);
    const ProgramRun run = runGemdb({"copies", file_, "--restore", "2"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, file_ + " is again as it was on 2026-03-14 09:15:00\n");
    EXPECT_EQ(readFile(file_), first);
    EXPECT_EQ(runGemdb({"copies", file_, "--restore", "1"}).status, 0);
    EXPECT_NE(select("SELECT rpt_id FROM secs_report WHERE rpt_desc = 'second'").size(), 0U);
}

TEST_F(Copies, ANumberThatIsNoneChangesNothing) {
    keep(0);
    change("second");
    const std::string before = readFile(file_);
    expectFailure({"copies", file_, "--restore", "2"}, "has 1 copies");
    EXPECT_NE(runGemdb({"copies", file_, "--restore", "0"}).status, 0);
    EXPECT_EQ(readFile(file_), before);
}

}  // namespace
}  // namespace stelvan::test
