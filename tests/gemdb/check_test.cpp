// gemdb check: silence and status 0 for a sound file, one line for each fault and status 1
// otherwise.
#include <filesystem>
#include <fstream>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

TEST_F(CommandTest, CheckIsSilentAboutASoundFile) {
    const ProgramRun run = runGemdb({"check", "--structure", file_});
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    EXPECT_EQ(run.out, "");
}

TEST_F(CommandTest, CheckPrintsOneLineForEachFault) {
    const ScratchDir other;
    const std::string damaged = other.copyOf(model("refused/damaged_rows/gem.mdb"));
    const std::string before = readFile(damaged);
    const ProgramRun run = runGemdb({"check", "--structure", damaged});
    EXPECT_EQ(run.status, 1) << run.err;
    const std::vector<std::string> lines = splitLines(run.out);
    EXPECT_FALSE(lines.empty());
    for (const std::string& line : lines) EXPECT_TRUE(line.starts_with("page ")) << line;
    EXPECT_EQ(readFile(damaged), before);
}

TEST_F(CommandTest, CheckFindsAFlippedByteInAnIndex) {
    std::string bytes = readFile(file_);
    std::size_t leaf = 0;
    for (std::size_t page = 4096; page < bytes.size(); page += 4096) {
        constexpr std::size_t kFirstMaskBytes = 8;  // an entry ends within its first 64 bytes
        const bool used = bytes[page] == 4 && bytes[page + 1] == 1;
        if (used && bytes.substr(page + 27, kFirstMaskBytes) != std::string(kFirstMaskBytes, '\0'))
            leaf = page;
    }
    ASSERT_NE(leaf, 0U);
    bytes[leaf + 481] = static_cast<char>(bytes[leaf + 481] ^ 0x20);
    std::ofstream(file_, std::ios::binary) << bytes;
    EXPECT_EQ(runGemdb({"check", "--structure", file_}).status, 1);
}

TEST_F(CommandTest, CheckOfWhatIsNoDatabaseFails) {
    expectFailure({"check", "--structure", folder_.path() / "absent.mdb"}, "absent.mdb");
    expectFailure({"check", folder_.path() / "absent.mdb"}, "absent.mdb");
}

}  // namespace
}  // namespace stelvan::test
