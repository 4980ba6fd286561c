// What gemdb sedd and gemdb sml have in common: where they write, and that what fails leaves
// nothing behind.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

class Publish : public CommandTest, public ::testing::WithParamInterface<const char*> {
protected:
    /// One line, status 2; a file that is not there stays so, an old one as it was.
    void expectNothingWritten(const std::string& file, const std::string& part) const {
        const std::string fresh = folder_.path() / "fresh";
        const std::string old = folder_.path() / "old";
        std::ofstream(old) << "as before";
        expectFailure({GetParam(), file, "-o", fresh}, part);
        expectFailure({GetParam(), file, "-o", old}, part);
        EXPECT_FALSE(std::filesystem::exists(fresh));
        EXPECT_EQ(readFile(old), "as before");
        const ProgramRun run = runGemdb({GetParam(), file});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        std::filesystem::remove(old);
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            EXPECT_EQ(entry.path().filename().string().find("fresh"), std::string::npos);
    }
};

TEST_P(Publish, WritesTheSameToAFileAndToStandardOutput) {
    const std::string before = readFile(file_);
    const std::string out = folder_.path() / "out";
    std::ofstream(out) << "an old one";
    EXPECT_EQ(runGemdb({GetParam(), file_, "-o", out}).status, 0);
    const ProgramRun run = runGemdb({GetParam(), file_});
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(run.out.empty());
    EXPECT_EQ(readFile(out), run.out);
    EXPECT_EQ(runGemdb({GetParam(), file_, "-o", "-"}).out, run.out);
    EXPECT_EQ(readFile(file_), before);
}

TEST_P(Publish, ListsWhatIsLeftOutOneLineEachAndSucceeds) {
    const ProgramRun run = runGemdb({GetParam(), file_, "-o", folder_.path() / "out"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_FALSE(run.err.empty());
    for (const std::string& line : splitLines(run.err))
        EXPECT_EQ(line.find("gemdb: note: "), 0U) << line;
}

TEST_P(Publish, FailsForWhatIsNoModel) {
    expectNothingWritten(folder_.path() / "absent.mdb", "absent.mdb");
    for (const char* kind : {"text_file", "truncated", "zero_length", "wrong_signature", "access97",
                             "access2007", "damaged_catalogue", "damaged_rows"})
        expectNothingWritten(model(std::string("refused/") + kind + "/gem.mdb"), "gem.mdb");
}

TEST_P(Publish, FailsForADatabaseOfOtherTables) {
    const std::string file = model("shapes/numeric.mdb");
    const ProgramRun run = runGemdb({GetParam(), file, "-o", folder_.path() / "out"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("no GEM model"), std::string::npos) << run.err;
    expectNothingWritten(file, "numeric.mdb");
}

TEST_P(Publish, FailsForALockedFile) {
    const int file = ::open(file_.c_str(), O_RDWR);
    ASSERT_GE(file, 0);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    ASSERT_EQ(::fcntl(file, F_OFD_SETLK, &lock), 0);
    expectNothingWritten(file_, "gem.mdb");
    ::close(file);
}

TEST_P(Publish, NeverWritesOverTheModel) {
    const std::string before = readFile(file_);
    expectFailure({GetParam(), file_, "-o", file_}, "is the model itself");
    const std::string link = folder_.path() / "link";
    std::filesystem::create_symlink(file_, link);
    expectFailure({GetParam(), file_, "-o", link}, "is the model itself");
    EXPECT_EQ(readFile(file_), before);
}

TEST_P(Publish, FailsWhereItCannotWrite) {
    expectFailure({GetParam(), file_, "-o", folder_.path() / "absent" / "out"}, "absent");
    expectFailure({GetParam(), file_, "-o", folder_.path()}, folder_.path());
}

INSTANTIATE_TEST_SUITE_P(Verbs, Publish, ::testing::Values("sedd", "sml"),
                         [](const auto& verb) { return std::string(verb.param); });

}  // namespace
}  // namespace stelvan::test
