// Keeping a copy and putting one back, interrupted at any operation: the model is whole, as before
// or as restored, and a copy is whole or not there.
#include "model/core/kept_copies.h"

#include <gtest/gtest.h>

#include <string>

#include "model/core/sink.h"
#include "tests/crash/child_process.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/crash/interruption.h"
#include "tests/crash/numbered_pages.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using model::KeptCopies;

constexpr jet::PageNumber kPages = 12;

void advance(const fs::path& file, std::uint64_t next) {
    const auto pages = jet::PageFile::open(file, jet::Access::ReadWrite);
    jet::WriteScope unit(pages);
    std::vector<jet::PageNumber> all(pages->pageCount());
    for (jet::PageNumber page = 0; page < all.size(); ++page) all[page] = page;
    NumberedPages::write(*pages, all, 1, next);
    unit.commit();
}

class InterruptedCopies : public ::testing::TestWithParam<Fault> {
protected:
    /// Everything anew: a model of the second generation, and a copy of the first where one is
    /// wanted.
    void begin(bool withCopy) {
        for (const auto& entry : fs::directory_iterator(scratch_.path()))
            fs::remove_all(entry.path());
        NumberedPages::create(file_, kPages);
        first_ = model::readWhole(file_);
        if (withCopy) (void)kept_.keep(file_);
        advance(file_, 2);
        second_ = model::readWhole(file_);
    }
    void expectWholeCopies() const {
        for (const model::KeptCopy& copy : kept_.of(file_)) {
            const std::string bytes = model::readWhole(copy.path);
            EXPECT_TRUE(bytes == first_ || bytes == second_) << copy.path;
        }
    }

    ScratchDir scratch_;
    fs::path file_ = scratch_.path() / "gem.mdb";
    KeptCopies kept_{scratch_.path() / "copies"};
    std::string first_;
    std::string second_;
};

TEST_P(InterruptedCopies, AKeptCopyIsWholeOrNotThereAndTheModelAsItWas) {
    Outcome outcome = Outcome::Failed;
    for (std::uint64_t n = 1; outcome != Outcome::Done; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n));
        begin(false);
        FaultyFileSystem files;
        {
            const jet::FileSystemOverride use(files);
            files.failAt(n, GetParam());
            outcome = outcomeOf([&] { (void)kept_.keep(file_); });
        }
        EXPECT_EQ(model::readWhole(file_), second_);
        expectWholeCopies();
        if (outcome == Outcome::Done) {
            ASSERT_GT(n, 3U);
        }
        // The next one works, and the power that fails after it takes nothing of it.
        FaultyFileSystem sound;
        fs::path copy;
        {
            const jet::FileSystemOverride use(sound);
            copy = kept_.keep(file_);
        }
        EXPECT_EQ(model::readWhole(copy), second_);
        const fs::path cut = scratch_.path() / "cut";
        sound.powerCut(cut, static_cast<std::uint32_t>(n));
        ASSERT_TRUE(fs::exists(cut / copy.filename()));
        EXPECT_EQ(model::readWhole(cut / copy.filename()), second_);
    }
}

TEST_P(InterruptedCopies, ARestoreLeavesTheModelAsBeforeOrAsTheCopy) {
    Outcome outcome = Outcome::Failed;
    for (std::uint64_t n = 1; outcome != Outcome::Done; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n));
        begin(true);
        const model::KeptCopy copy = kept_.of(file_).front();
        FaultyFileSystem files;
        {
            const jet::FileSystemOverride use(files);
            files.failAt(n, GetParam());
            outcome = outcomeOf([&] { kept_.restore(file_, copy); });
        }
        const std::string now = model::readWhole(file_);
        EXPECT_TRUE(now == first_ || (now == second_ && mayBeBefore(outcome)));
        for (std::uint32_t seed = 0; seed < 8; ++seed) {
            const fs::path cut = scratch_.path() / "cut";
            fs::remove_all(cut);
            files.powerCut(cut, seed);
            const fs::path found = cut / "gem.mdb";
            const std::string bytes = fs::exists(found) ? model::readWhole(found) : now;
            EXPECT_TRUE(bytes == first_ || (bytes == second_ && outcome != Outcome::Done))
                << "power cut " << seed;
        }
        expectWholeCopies();
        if (now == first_) {
            EXPECT_EQ(model::readWhole(kept_.of(file_).front().path), second_)
                << "the present file was kept first";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedCopies, ::testing::ValuesIn(kEveryFault));

TEST(CopiesBesideWriters, AreOfOneMoment) {
    const ScratchDir scratch;
    const fs::path file = scratch.path() / "gem.mdb";
    NumberedPages::create(file, 60);
    const SharedNumber done;
    Child writer([&] {
        for (std::uint64_t next = 2;; ++next) {
            advance(file, next);
            *done = next;
        }
        return true;
    });
    const KeptCopies kept(scratch.path() / "copies");
    ASSERT_TRUE(writer.runsUntil(done, 5));
    for (int n = 0; n < 12; ++n) {
        const auto copy = jet::PageFile::open(kept.keep(file), jet::Access::ReadOnly);
        const jet::ReadScope scope(copy);
        const auto found = NumberedPages::generations(*copy);
        EXPECT_EQ(found, std::vector<std::uint64_t>(found.size(), found.front()));
    }
    writer.kill();
}

}  // namespace
}  // namespace stelvan::test
