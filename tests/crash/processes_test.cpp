// Real processes on one file: killed while they write, writing in turns, reading meanwhile.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "jet/disk/error.h"
#include "jet/disk/page_file.h"
#include "tests/crash/child_process.h"
#include "tests/crash/numbered_pages.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr jet::PageNumber kPages = 24;

/// One unit of work: every page goes from generation g to g + 1; now and then the file grows.
/// Returns g + 1.
std::uint64_t advance(const std::shared_ptr<jet::PageFile>& file) {
    jet::WriteScope unit(file);
    const std::vector<std::uint64_t> before = NumberedPages::generations(*file);
    const std::uint64_t next = before.front() + 1;
    std::vector<jet::PageNumber> pages(before.size());
    for (jet::PageNumber page = 0; page < pages.size(); ++page) pages[page] = page;
    NumberedPages::write(*file, pages, next % 8 == 0 ? 1 : 0, next);
    unit.commit();
    return next;
}

/// The generation that all pages show, 0 where they differ.
std::uint64_t commonGeneration(jet::PageFile& file) {
    const std::vector<std::uint64_t> found = NumberedPages::generations(file);
    return std::ranges::all_of(found, [&](std::uint64_t g) { return g == found.front(); })
               ? found.front()
               : 0;
}

/// Sleeps for a part of a unit of work or some, so that a kill meets any point of one.
void sleepAtRandom(std::mt19937& random) {
    std::this_thread::sleep_for(
        std::chrono::microseconds(std::uniform_int_distribution<int>(0, 4000)(random)));
}

class Processes : public ::testing::Test {
protected:
    void SetUp() override { NumberedPages::create(path_, kPages); }

    std::uint64_t found() const {
        const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
        const jet::ReadScope scope(file);
        return commonGeneration(*file);
    }

    /// Reads again and again until told to stop: always one generation, never an older one.
    bool readsWellUntil(const SharedNumber& stop) const {
        const auto file = jet::PageFile::open(path_, jet::Access::ReadOnly);
        std::uint64_t last = 1;
        while (*stop == 0) {
            const jet::ReadScope scope(file);
            const std::uint64_t now = commonGeneration(*file);
            if (now < last) return false;
            last = now;
        }
        return true;
    }

    ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
};

TEST_F(Processes, AKilledWriterLeavesAWholeUnitAndLosesNoneThatWasDone) {
    std::mt19937 random(7);
    const SharedNumber done;
    *done = 1;
    std::uniform_int_distribution<std::uint64_t> someUnits(0, 3);
    std::uint64_t wanted = 0;
    for (int round = 0; round < 60; ++round) {
        const std::uint64_t units = someUnits(random);
        wanted += units;
        const std::uint64_t goal = *done + units;
        Child writer([&] {
            const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
            while (true) *done = advance(file);
            return true;
        });
        EXPECT_TRUE(writer.runsUntil(done, goal)) << "round " << round;
        sleepAtRandom(random);
        writer.kill();
        const std::uint64_t now = found();
        EXPECT_TRUE(now == *done || now == *done + 1)
            << "round " << round << ": " << now << ", " << *done;
        *done = now;
        EXPECT_FALSE(fs::exists(path_.string() + "-journal"));
    }
    EXPECT_GE(*done, 1 + wanted);
}

TEST_F(Processes, WritersTakeTurnsAndReadersNeverSeeHalf) {
    constexpr std::uint64_t kUnits = 60;
    const SharedNumber stop;
    const auto write = [&] {
        const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
        for (std::uint64_t i = 0; i < kUnits; ++i) (void)advance(file);
        return true;
    };
    Child reader([&] { return readsWellUntil(stop); });
    Child first(write);
    Child second(write);
    EXPECT_TRUE(first.wait());
    EXPECT_TRUE(second.wait());
    *stop = 1;
    EXPECT_TRUE(reader.wait());
    EXPECT_EQ(found(), 1 + 2 * kUnits) << "a unit was lost";
}

TEST_F(Processes, OneKilledWriterStopsNeitherTheOthersNorTheReaders) {
    const SharedNumber stop;
    const SharedNumber units;
    const auto write = [&] {
        const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
        while (*stop == 0) {
            (void)advance(file);
            ++*units;
        }
        return true;
    };
    Child reader([&] { return readsWellUntil(stop); });
    Child survivor(write);
    std::mt19937 random(11);
    for (int round = 0; round < 15; ++round) {
        const std::uint64_t before = *units;
        Child victim(write);
        EXPECT_TRUE(victim.runsUntil(units, before + 2)) << "round " << round;
        sleepAtRandom(random);
        victim.kill();
    }
    const std::uint64_t before = *units;
    EXPECT_TRUE(survivor.runsUntil(units, before + 2)) << "the survivor does not go on";
    *stop = 1;
    EXPECT_TRUE(survivor.wait());
    EXPECT_TRUE(reader.wait());
    EXPECT_GE(found(), 1 + *units);
}

TEST_F(Processes, AUnitRefusedAsLockedLeavesItsProgramAbleToGoOn) {
    const SharedNumber stage;
    Child holder([&] {
        const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
        const jet::WriteScope unit(file);
        *stage = 1;
        while (*stage == 1) std::this_thread::sleep_for(1ms);
        return true;
    });
    while (*stage == 0) std::this_thread::sleep_for(1ms);
    const auto file = jet::PageFile::open(path_, jet::Access::ReadWrite);
    {
        const jet::ReadScope reading(file);
        EXPECT_EQ(commonGeneration(*file), 1u) << "a writer at work does not keep readers out";
    }
    try {
        (void)advance(file);
        ADD_FAILURE() << "two writers at once";
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.kind(), jet::ErrorKind::Locked);
    }
    *stage = 2;
    EXPECT_TRUE(holder.wait());
    EXPECT_EQ(advance(file), 2u);
}

}  // namespace
}  // namespace stelvan::test
