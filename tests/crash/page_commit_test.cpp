// A unit of work is interrupted at every operation in every way, the first of a program as well as
// a later one, whose journal lies there already; what is found afterwards is always the file before
// it or after it.

#include <gtest/gtest.h>

#include <string>

#include "jet/disk/page_file.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/crash/interruption.h"
#include "tests/crash/numbered_pages.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using Generations = std::vector<std::uint64_t>;

constexpr jet::PageNumber kPages = 12;
const Generations kBefore(kPages, 1);
const Generations kAfter{1, 2, 1, 1, 2, 2, 2, 1, 1, 1, 1, 2, 2, 2, 2};

constexpr int kPowerCuts = 12;

struct Case {
    Fault fault;
    bool later;  // the program has done units before
};

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
    return std::to_string(static_cast<int>(info.param.fault)) +
           (info.param.later ? "_later" : "_first");
}

template <typename Faults>
std::vector<Case> casesOf(const Faults& faults) {
    std::vector<Case> cases;
    for (const Fault fault : faults)
        for (const bool later : {false, true}) cases.push_back({fault, later});
    return cases;
}

class InterruptedCommit : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override { NumberedPages::create(original_, kPages); }

    /// A fresh copy in a folder of its own, as the program has it open.
    fs::path freshCopy() {
        const fs::path folder = scratch_.path() / "work";
        fs::remove_all(folder);
        fs::create_directory(folder);
        fs::copy_file(original_, folder / "gem.mdb");
        return folder / "gem.mdb";
    }

    /// The file as the program has it open before the unit that is interrupted.
    static std::shared_ptr<jet::PageFile> open(const fs::path& path, FaultyFileSystem& files) {
        auto file = jet::PageFile::open(path, jet::Access::ReadWrite, files);
        if (GetParam().later) {
            for (const std::uint64_t generation : {9u, 1u}) {
                jet::WriteScope unit(file);
                NumberedPages::write(*file, {2, 3, 4, 5, 6, 7, 8, 9, 10}, 0, generation);
                unit.commit();
            }
        }
        files.startOver(0, Fault::Stop);
        return file;
    }

    static Outcome runUnit(jet::PageFile& file) {
        return outcomeOf([&] {
            jet::WriteScope unit(file.shared_from_this());
            NumberedPages::write(file, {1, 4, 5, 6, 11}, 3, 2);
            unit.commit();
        });
    }

    /// What a new process finds.
    static Generations reopened(const fs::path& path) {
        FaultyFileSystem sound;
        const auto file = jet::PageFile::open(path, jet::Access::ReadWrite, sound);
        const jet::ReadScope scope(file);
        return NumberedPages::generations(*file);
    }

    static void expectBeforeOrAfter(const Generations& found, Outcome outcome,
                                    const std::string& where) {
        const bool before = found == kBefore && mayBeBefore(outcome);
        const bool after = found == kAfter && mayBeAfter(outcome, GetParam().fault);
        EXPECT_TRUE(before || after) << where << ": " << toText(found);
    }

    /// All power failures that could happen at this moment, or some of them.
    void expectSafeAgainstPowerCuts(const FaultyFileSystem& files, Outcome outcome,
                                    const std::string& where) {
        for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
            const fs::path folder = scratch_.path() / "cut";
            fs::remove_all(folder);
            files.powerCut(folder, seed);
            const Generations found = reopened(folder / "gem.mdb");
            // What failed and was put back may, when the power fails too, be found done; never
            // half.
            const Outcome judged = outcome == Outcome::Failed ? Outcome::Crashed : outcome;
            expectBeforeOrAfter(found, judged, where + ", power cut " + std::to_string(seed));
            EXPECT_FALSE(fs::exists(folder / "gem.mdb-journal")) << where;
        }
    }

    /// How many operations an undisturbed unit takes.
    std::uint64_t operationsOfOneUnit() {
        FaultyFileSystem files;
        const auto file = open(freshCopy(), files);
        EXPECT_EQ(runUnit(*file), Outcome::Done);
        return files.operations();
    }

    ScratchDir scratch_;
    fs::path original_ = scratch_.path() / "original.mdb";
};

TEST_P(InterruptedCommit, LeavesTheFileAsBeforeOrAsAfter) {
    const std::uint64_t operations = operationsOfOneUnit();
    ASSERT_GE(operations, 10u);
    for (std::uint64_t n = 1; n <= operations + 1; ++n) {
        const std::string where = "operation " + std::to_string(n);
        const fs::path path = freshCopy();
        FaultyFileSystem files;
        Outcome outcome = Outcome::Done;
        {
            const auto file = open(path, files);
            files.failAt(n, GetParam().fault);
            outcome = runUnit(*file);
        }
        expectSafeAgainstPowerCuts(files, outcome, where);
        const Generations found = reopened(path);
        expectBeforeOrAfter(found, outcome, where);
        EXPECT_TRUE(n <= operations || outcome == Outcome::Done);
    }
}

class FailedCommit : public InterruptedCommit {};

TEST_P(FailedCommit, LeavesTheSameProgramAbleToGoOn) {
    const std::uint64_t operations = operationsOfOneUnit();
    for (std::uint64_t n = 1; n <= operations; ++n) {
        const std::string where = "operation " + std::to_string(n);
        FaultyFileSystem files;
        const auto file = open(freshCopy(), files);
        files.failAt(n, GetParam().fault);
        const Outcome outcome = runUnit(*file);
        files.failAt(0, Fault::Stop);
        {
            const jet::ReadScope scope(file);
            expectBeforeOrAfter(NumberedPages::generations(*file), outcome, where);
        }
        if (outcome == Outcome::Done) continue;
        jet::WriteScope unit(file);
        NumberedPages::write(*file, {2}, 0, 3);
        unit.commit();
        const jet::ReadScope scope(file);
        EXPECT_EQ(NumberedPages::generations(*file)[2], 3u) << where;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedCommit, ::testing::ValuesIn(casesOf(kEveryFault)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(EveryFailure, FailedCommit, ::testing::ValuesIn(casesOf(kEveryFailure)),
                         nameOf);

class InterruptedUndo : public InterruptedCommit {};

TEST_P(InterruptedUndo, IsFinishedByTheNextOne) {
    const std::uint64_t operations = operationsOfOneUnit();
    int stops = 0;
    for (std::uint64_t n = 1; n <= operations; ++n) {
        for (std::uint64_t m = n + 1;; ++m) {
            FaultyFileSystem files;
            Outcome outcome = Outcome::Done;
            {
                const auto file = open(freshCopy(), files);
                files.failAt(n, GetParam().fault);
                files.stopAt(m);
                outcome = runUnit(*file);
            }
            if (!files.stopped()) break;
            ++stops;
            expectSafeAgainstPowerCuts(
                files, outcome, "operations " + std::to_string(n) + ", " + std::to_string(m));
        }
    }
    EXPECT_GT(stops, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedUndo,
                         ::testing::ValuesIn(casesOf(std::initializer_list<Fault>{Fault::NoSpace,
                                                                                  Fault::IoError})),
                         nameOf);

class InterruptedRecovery : public InterruptedCommit {};

TEST_P(InterruptedRecovery, CanBeTakenUpByTheNextOne) {
    const std::uint64_t operations = operationsOfOneUnit();
    const fs::path cut = scratch_.path() / "first";
    int recoveries = 0;
    for (std::uint64_t n = 1; n <= operations; ++n) {
        FaultyFileSystem files;
        {
            const auto file = open(freshCopy(), files);
            files.failAt(n, Fault::Stop);
            runUnit(*file);
        }
        fs::remove_all(cut);
        files.powerCut(cut, static_cast<std::uint32_t>(n));
        for (std::uint64_t m = 1;; ++m) {
            const fs::path again = scratch_.path() / "again";
            fs::remove_all(again);
            fs::copy(cut, again);
            FaultyFileSystem second;
            second.failAt(m, GetParam().fault);
            try {
                const auto file =
                    jet::PageFile::open(again / "gem.mdb", jet::Access::ReadWrite, second);
                const jet::ReadScope scope(file);
                (void)file->read(0);
            } catch (const Crash&) {
            } catch (const jet::Error&) {
            }
            if (second.operations() < m) break;
            ++recoveries;
            expectSafeAgainstPowerCuts(
                second, Outcome::Crashed,
                "operations " + std::to_string(n) + ", " + std::to_string(m));
        }
    }
    EXPECT_GT(recoveries, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedRecovery,
                         ::testing::ValuesIn(casesOf(std::initializer_list<Fault>{
                             Fault::Stop, Fault::StopTorn, Fault::IoError})),
                         nameOf);

}  // namespace
}  // namespace stelvan::test
