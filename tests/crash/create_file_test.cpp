// Creating a file is interrupted at every operation: the name leads to the whole file or to none.

#include <gtest/gtest.h>

#include <string>

#include "tests/crash/faulty_file_system.h"
#include "tests/crash/interruption.h"
#include "tests/crash/numbered_pages.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

constexpr jet::PageNumber kPages = 5;

bool absentOrWhole(const fs::path& path) {
    if (!fs::exists(path)) return true;
    const auto file = jet::PageFile::open(path, jet::Access::ReadOnly);
    const jet::ReadScope scope(file);
    return NumberedPages::generations(*file) == std::vector<std::uint64_t>(kPages, 1);
}

class InterruptedCreation : public ::testing::TestWithParam<Fault> {};

TEST_P(InterruptedCreation, LeavesTheWholeFileOrNone) {
    Outcome outcome = Outcome::Failed;
    for (std::uint64_t n = 1; outcome != Outcome::Done; ++n) {
        const std::string where = "operation " + std::to_string(n);
        const ScratchDir scratch;
        const fs::path path = scratch.path() / "gem.mdb";
        FaultyFileSystem files;
        files.failAt(n, GetParam());
        {
            const jet::FileSystemOverride use(files);
            outcome = outcomeOf([&] { NumberedPages::create(path, kPages); });
        }
        EXPECT_TRUE(absentOrWhole(path)) << where;
        for (std::uint32_t seed = 0; seed < 12; ++seed) {
            const fs::path folder = scratch.path() / "cut";
            fs::remove_all(folder);
            files.powerCut(folder, seed);
            EXPECT_TRUE(absentOrWhole(folder / "gem.mdb")) << where << ", power cut " << seed;
            if (outcome == Outcome::Done) {
                EXPECT_TRUE(fs::exists(folder / "gem.mdb")) << where;
            }
        }
        if (outcome == Outcome::Done) continue;
        if (!fs::exists(path)) {
            NumberedPages::create(path, kPages);
            EXPECT_TRUE(absentOrWhole(path)) << "and it can be tried again";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedCreation, ::testing::ValuesIn(kEveryFault));

}  // namespace
}  // namespace stelvan::test
