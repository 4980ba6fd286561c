#include "model/core/kept_copies.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <optional>
#include <string>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "model/core/refusal.h"
#include "model/core/sink.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using model::KeptCopies;
using model::KeptCopy;

class KeptCopiesTest : public ::testing::Test {
protected:
    ScratchDir scratch;
    std::chrono::sys_seconds now{std::chrono::seconds(1'773'479'700)};  // 2026-03-14 09:15:00
    KeptCopies kept{scratch.path() / "state" / "copies", [this] { return now; }};
    fs::path file = scratch.copyOf(test::model("gem.mdb"));

    /// Every change makes another content.
    void change() {
        jet::Database database = jet::Database::open(file);
        jet::Table& reports = database.table("secs_report");
        const std::size_t text = reports.info().findColumn("rpt_desc").value();
        const auto rows = reports.scan({});
        ASSERT_TRUE(rows->next());
        const std::string next = "change " + std::to_string(++changes_);
        reports.update(rows->rowId(), std::array{jet::ColumnValue{text, next}});
    }
    fs::path keepLater() {
        now += std::chrono::hours(1);
        return kept.keep(file);
    }
    std::string refusalOf(const KeptCopy& copy) {
        const std::string before = model::readWhole(file);
        try {
            kept.restore(file, copy);
        } catch (const std::exception& refused) {
            EXPECT_EQ(model::readWhole(file), before);
            return refused.what();
        }
        return "no refusal";
    }
    int changes_ = 0;
};

TEST_F(KeptCopiesTest, TheFileIsKeptAsItIsByDateAndForItsUserAlone) {
    const std::string before = model::readWhole(file);
    const fs::path copy = kept.keep(file);
    EXPECT_EQ(copy, scratch.path() / "state/copies" / fs::canonical(file).relative_path() /
                        "20260314T091500Z.mdb");
    EXPECT_EQ(model::readWhole(copy), before);
    EXPECT_EQ(fs::status(copy).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(scratch.path() / "state").permissions(), fs::perms::owner_all);
    const auto copies = kept.of(file);
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies.front().path, copy);
    EXPECT_EQ(copies.front().made, now);
    EXPECT_EQ(copies.front().bytes, before.size());
}

TEST_F(KeptCopiesTest, WhatIsAsTheLatestCopyIsNotKeptTwice) {
    const fs::path first = kept.keep(file);
    EXPECT_EQ(keepLater(), first);
    change();
    const fs::path second = keepLater();
    EXPECT_NE(second, first);
    EXPECT_EQ(kept.of(file).size(), 2U);
}

TEST_F(KeptCopiesTest, TheLatestTenStayAlsoThoseOfOneSecond) {
    std::vector<fs::path> made;
    for (int n = 0; n < 13; ++n) {
        change();
        made.insert(made.begin(), kept.keep(file));
    }
    const auto copies = kept.of(file);
    ASSERT_EQ(copies.size(), KeptCopies::kMost);
    for (std::size_t at = 0; at < copies.size(); ++at) EXPECT_EQ(copies[at].path, made[at]);
}

TEST_F(KeptCopiesTest, AClockThatWasSetBackMakesNoCopyOld) {
    for (std::size_t n = 0; n < KeptCopies::kMost; ++n) {
        change();
        (void)keepLater();
    }
    now -= std::chrono::hours(1000);
    change();
    const fs::path copy = kept.keep(file);
    EXPECT_EQ(kept.of(file).front().path, copy);
    EXPECT_EQ(kept.of(file).size(), KeptCopies::kMost);
}

TEST_F(KeptCopiesTest, AModelIsToldByItsPathWithLinksFollowed) {
    (void)kept.keep(file);
    fs::create_directories(scratch.path() / "linked");
    fs::create_symlink(file, scratch.path() / "linked" / "gem.mdb");
    EXPECT_EQ(kept.of(scratch.path() / "linked" / "gem.mdb").size(), 1U);
    EXPECT_TRUE(kept.of(scratch.path() / "elsewhere" / "gem.mdb").empty());
}

TEST_F(KeptCopiesTest, OtherFilesBetweenTheCopiesAreLeftAlone) {
    const fs::path folder = kept.keep(file).parent_path();
    for (const char* name : {"notes.txt", "20260314T091500Z.mdb.draft-1", "20260314T091500Z-x.mdb"})
        std::ofstream(folder / name) << "mine";
    for (int n = 0; n < 12; ++n) {
        change();
        (void)keepLater();
    }
    EXPECT_EQ(kept.of(file).size(), KeptCopies::kMost);
    EXPECT_EQ(model::readWhole(folder / "notes.txt"), "mine");
    EXPECT_TRUE(fs::exists(folder / "20260314T091500Z-x.mdb"));
}

TEST_F(KeptCopiesTest, WhatAProgramThatDiedLeftHalfDoneIsRemoved) {
    const fs::path copy = kept.keep(file);
    const pid_t dead = ::fork();
    if (dead == 0) ::_exit(0);
    ::waitpid(dead, nullptr, 0);
    const fs::path draft = copy.string() + ".draft-" + std::to_string(dead);
    std::ofstream(draft) << "half";
    change();
    (void)keepLater();
    EXPECT_FALSE(fs::exists(draft));
}

TEST_F(KeptCopiesTest, WhereNoneCanBeKeptThatIsSaid) {
    std::ofstream(scratch.path() / "state") << "in the way";
    EXPECT_THROW((void)kept.keep(file), std::exception);
    EXPECT_THROW((void)KeptCopies("/proc/nowhere").keep(file), std::exception);
}

TEST_F(KeptCopiesTest, ARestoreKeepsThePresentFileAndItsPermissions) {
    const std::string first = model::readWhole(file);
    (void)kept.keep(file);
    change();
    const std::string second = model::readWhole(file);
    fs::permissions(file, fs::perms(0640));
    now += std::chrono::hours(1);
    kept.restore(file, kept.of(file).back());
    EXPECT_EQ(model::readWhole(file), first);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    ASSERT_EQ(kept.of(file).size(), 2U);
    kept.restore(file, kept.of(file).front());
    EXPECT_EQ(model::readWhole(file), second);
}

TEST_F(KeptCopiesTest, TheOldestOfTenIsThereUntilItIsRestored) {
    const std::string first = model::readWhole(file);
    for (std::size_t n = 0; n < KeptCopies::kMost; ++n) {
        (void)keepLater();
        change();
    }
    now += std::chrono::hours(1);
    kept.restore(file, kept.of(file).back());
    EXPECT_EQ(model::readWhole(file), first);
    EXPECT_EQ(kept.of(file).size(), KeptCopies::kMost);
}

TEST_F(KeptCopiesTest, ADamagedFileIsReplacedAndKeptAsItWas) {
    const std::string sound = model::readWhole(file);
    (void)kept.keep(file);
    std::ofstream(file, std::ios::trunc) << "no database at all";
    now += std::chrono::hours(1);
    kept.restore(file, kept.of(file).front());
    EXPECT_EQ(model::readWhole(file), sound);
    EXPECT_EQ(model::readWhole(kept.of(file).front().path), "no database at all");
}

TEST_F(KeptCopiesTest, AFileThatIsGoneComesBack) {
    const std::string sound = model::readWhole(file);
    (void)kept.keep(file);
    fs::remove(file);
    kept.restore(file, kept.of(file).front());
    EXPECT_EQ(model::readWhole(file), sound);
}

TEST_F(KeptCopiesTest, AJournalBesideTheFileDoesNotChangeWhatWasRestored) {
    const std::string sound = model::readWhole(file);
    (void)kept.keep(file);
    jet::Journal::Facts facts;
    facts.sizeBefore = sound.size();
    std::copy_n(sound.begin() + jet::commit_slots::kOffset, facts.slotsBefore.size(),
                facts.slotsBefore.begin());
    facts.slotAfter = jet::nextCommitSlot(facts.slotBefore());
    const std::array<std::uint8_t, jet::kPageSize> other{};
    const jet::Journal::Image image{3, other.data(), other.data()};
    fs::remove(file);
    jet::Journal journal(jet::FileSystem::posix(), fs::canonical(scratch.path()) / "gem.mdb");
    journal.write(facts, std::span(&image, 1), 0600);
    kept.restore(file, kept.of(file).front());
    EXPECT_FALSE(jet::anyFault(jet::check(file, {})));
    EXPECT_EQ(model::readWhole(file), sound);
    EXPECT_FALSE(journal.present());
}

TEST_F(KeptCopiesTest, AModelThatIsOpenHereIsNotReplaced) {
    (void)kept.keep(file);
    change();
    const KeptCopy copy = kept.of(file).front();
    const jet::Database open = jet::Database::open(file, jet::Access::ReadOnly);
    EXPECT_NE(refusalOf(copy).find("is open in this program"), std::string::npos);
}

TEST_F(KeptCopiesTest, AModelThatIsOpenInAnotherProgramIsNotReplaced) {
    (void)kept.keep(file);
    change();
    std::array<int, 2> ready{};
    std::array<int, 2> end{};
    ASSERT_EQ(::pipe(ready.data()), 0);
    ASSERT_EQ(::pipe(end.data()), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        ::close(end[1]);
        char byte = 'x';
        const jet::Database idle = jet::Database::open(file, jet::Access::ReadOnly);
        (void)!::write(ready[1], &byte, 1);
        (void)!::read(end[0], &byte, 1);
        ::_exit(0);
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_NE(refusalOf(kept.of(file).front()).find("process " + std::to_string(other)),
              std::string::npos);
    for (const int pipe : {end[0], end[1], ready[0], ready[1]}) ::close(pipe);
    ::waitpid(other, nullptr, 0);
    kept.restore(file, kept.of(file).back());
}

TEST_F(KeptCopiesTest, AModelInWhichAnAccessProgramIsIsNotReplaced) {
    (void)kept.keep(file);
    change();
    const auto lockFile = jet::FileSystem::posix().open(fs::path(file).replace_extension(".ldb"),
                                                        jet::FileSystem::Mode::Create);
    ASSERT_TRUE(lockFile->tryLock({0x10000001, 1}, jet::LockMode::Exclusive));
    EXPECT_NE(refusalOf(kept.of(file).front()).find("another program"), std::string::npos);
}

TEST_F(KeptCopiesTest, AModelThatMayOnlyBeReadIsNotReplaced) {
    (void)kept.keep(file);
    change();
    fs::permissions(file, fs::perms(0444));
    EXPECT_NE(refusalOf(kept.of(file).front()).find("may only be read"), std::string::npos);
}

}  // namespace
}  // namespace stelvan::test
