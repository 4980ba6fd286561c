// Scopes, pages and units of work over one file, and what happens when somebody else changes it.
#include "jet/disk/page_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "jet/disk/commit_slots.h"
#include "jet/disk/file_system.h"
#include "jet/disk/page_cache.h"
#include "jet/disk/read_ahead.h"
#include "jet/pages/format.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

namespace fs = std::filesystem;

std::uint64_t wordOf(PageBytes bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    return word;
}

void setWord(WritablePageBytes bytes, std::uint64_t word) {
    std::memcpy(bytes.data(), &word, sizeof word);
}

ErrorKind kindOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.kind();
    }
    ADD_FAILURE() << "nothing was thrown";
    return ErrorKind::Misuse;
}

class Pages : public ::testing::Test {
protected:
    /// Page n begins with the word 1000 + n.
    void SetUp() override {
        std::vector<std::uint8_t> bytes(kCount * kPageSize);
        for (PageNumber page = 0; page < kCount; ++page)
            setWord(WritablePageBytes(bytes.data() + page * kPageSize, kPageSize), 1000 + page);
        for (std::size_t slot = 0; slot < commit_slots::kCount; ++slot)
            bytes[commit_slots::kOffset + 2 * slot + 1] = 1;
        PageFile::create(path_, bytes);
        // A file that was made in this tick of the clock is looked at twice.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    std::shared_ptr<PageFile> open(Access access = Access::ReadWrite) const {
        return PageFile::open(path_, access);
    }

    static std::uint64_t word(const std::shared_ptr<PageFile>& file, PageNumber page) {
        const ReadScope scope(file);
        return wordOf(file->read(page));
    }

    static void change(const std::shared_ptr<PageFile>& file, PageNumber page,
                       std::uint64_t value) {
        WriteScope unit(file);
        setWord(file->edit(page), value);
        unit.commit();
    }

    /// As another program would, past all locks.
    void changeFromOutside(PageNumber page, std::uint64_t value) const {
        std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(page) * static_cast<std::streamoff>(kPageSize));
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    }

    std::uint16_t commitSlot() const {
        std::ifstream file(path_, std::ios::binary);
        file.seekg(commit_slots::kOffset);
        std::uint16_t slot = 0;
        file.read(reinterpret_cast<char*>(&slot), sizeof slot);
        return slot;
    }

    std::vector<std::string> filesBeside() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(scratch_.path()))
            names.push_back(entry.path().filename());
        return names;
    }

    static constexpr PageNumber kCount = 40;
    test::ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
};

TEST_F(Pages, AreReadByNumber) {
    const auto file = open();
    const ReadScope scope(file);
    EXPECT_EQ(file->pageCount(), kCount);
    EXPECT_EQ(file->byteSize(), kCount * kPageSize);
    for (PageNumber page : {39u, 0u, 1u, 2u, 3u, 17u, 2u})
        EXPECT_EQ(wordOf(file->read(page)), 1000 + page);
}

TEST_F(Pages, BeyondTheEndAreDamageThatNamesThePage) {
    const auto file = open();
    const ReadScope scope(file);
    for (const PageNumber page : {kCount, PageNumber{0xFFFFFF}, PageNumber{0xFFFFFFFF}}) {
        try {
            (void)file->read(page);
            FAIL() << page;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
            EXPECT_EQ(error.page(), page);
        }
    }
}

TEST_F(Pages, AreReadAndChangedOnlyWithinScopes) {
    const auto file = open();
    EXPECT_EQ(kindOf([&] { (void)file->read(0); }), ErrorKind::Misuse);
    const ReadScope scope(file);
    EXPECT_EQ(kindOf([&] { (void)file->edit(1); }), ErrorKind::Misuse);
    EXPECT_EQ(kindOf([&] { (void)file->append(); }), ErrorKind::Misuse);
}

TEST_F(Pages, OneFileIsOneObjectWhateverThePath) {
    const auto file = open();
    const fs::path link = scratch_.path() / "link.mdb";
    fs::create_hard_link(path_, link);
    EXPECT_EQ(PageFile::open(link, Access::ReadOnly), file);
    EXPECT_EQ(PageFile::open(scratch_.path() / "." / "gem.mdb", Access::ReadOnly), file);
    const fs::path symbolic = scratch_.path() / "symbolic.mdb";
    fs::create_symlink("gem.mdb", symbolic);
    EXPECT_EQ(PageFile::open(symbolic, Access::ReadOnly), file);
    const fs::path copy = scratch_.path() / "copy.mdb";
    fs::copy_file(path_, copy);
    EXPECT_NE(PageFile::open(copy, Access::ReadOnly), file);
}

TEST_F(Pages, ChangesAreSeenAtOnceInsideAndStayAfterCommit) {
    const auto file = open();
    {
        WriteScope unit(file);
        setWord(file->edit(7), 7);
        EXPECT_EQ(wordOf(file->read(7)), 7u);
        EXPECT_EQ(file->append(), kCount);
        EXPECT_EQ(wordOf(file->read(kCount)), 0u);
        setWord(file->edit(kCount), 40);
        EXPECT_EQ(file->pageCount(), kCount + 1);
        unit.commit();
    }
    EXPECT_EQ(word(file, 7), 7u);
    EXPECT_EQ(word(file, kCount), 40u);
    EXPECT_EQ(fs::file_size(path_), (kCount + 1) * kPageSize);
}

TEST_F(Pages, AreAsBeforeAfterARollback) {
    const auto file = open();
    const ReadScope scope(file);
    const PageBytes seen = file->read(7);
    {
        WriteScope unit(file);
        setWord(file->edit(7), 7);
        (void)file->append();
        (void)file->append();
        EXPECT_EQ(wordOf(seen), 7u);
    }
    EXPECT_EQ(wordOf(seen), 1007u);
    EXPECT_EQ(file->pageCount(), kCount);
    EXPECT_EQ(kindOf([&] { (void)file->read(kCount); }), ErrorKind::Corrupt);
    EXPECT_EQ(commitSlot(), 0x0100);
}

TEST_F(Pages, RollingBackTellsThoseWhoKeepDefinitions) {
    const auto file = open();
    const ReadScope scope(file);
    const std::uint64_t version = file->version();
    { const WriteScope nothingChanged(file); }
    EXPECT_EQ(file->version(), version);
    {
        const WriteScope unit(file);
        setWord(file->edit(7), 7);
    }
    EXPECT_NE(file->version(), version);
}

TEST_F(Pages, InnerUnitsCommitWithTheOuterOne) {
    const auto file = open();
    {
        WriteScope outer(file);
        {
            WriteScope inner(file);
            setWord(file->edit(1), 1);
            inner.commit();
        }
        EXPECT_EQ(commitSlot(), 0x0100) << "an inner commit must not write";
    }
    EXPECT_EQ(word(file, 1), 1001u) << "the outer one was rolled back";
    {
        WriteScope outer(file);
        WriteScope inner(file);
        setWord(file->edit(1), 1);
        inner.commit();
        outer.commit();
    }
    EXPECT_EQ(word(file, 1), 1u);
}

TEST_F(Pages, AnInnerRollbackDoomsTheOuterUnit) {
    const auto file = open();
    WriteScope outer(file);
    setWord(file->edit(1), 1);
    { const WriteScope inner(file); }
    EXPECT_EQ(kindOf([&] { outer.commit(); }), ErrorKind::Misuse);
    EXPECT_EQ(word(file, 1), 1001u);
    change(file, 2, 2);
    EXPECT_EQ(word(file, 2), 2u) << "the next unit is not doomed";
}

TEST_F(Pages, WhatAFailedUnitTakesBackRunsLastFirstAfterThePagesAreAsBefore) {
    const auto file = open();
    std::vector<std::string> taken;
    file->onRollback([&] { taken.emplace_back("outside of a unit"); });
    {
        WriteScope outer(file);
        setWord(file->edit(1), 1);
        file->onRollback([&] { taken.push_back("first, " + std::to_string(word(file, 1))); });
        {
            WriteScope inner(file);
            file->onRollback([&] { taken.emplace_back("second"); });
            inner.commit();
        }
        EXPECT_TRUE(taken.empty());
        EXPECT_TRUE(file->inUnit());
    }
    EXPECT_EQ(taken, (std::vector<std::string>{"second", "first, 1001"}));
    EXPECT_FALSE(file->inUnit());
}

TEST_F(Pages, ADoomedUnitTakesBackAndACommittedOneDoesNot) {
    const auto file = open();
    int taken = 0;
    {
        WriteScope unit(file);
        file->onRollback([&] { ++taken; });
        unit.commit();
    }
    change(file, 1, 1);
    EXPECT_EQ(taken, 0);
    WriteScope outer(file);
    file->onRollback([&] { ++taken; });
    { const WriteScope inner(file); }
    EXPECT_EQ(taken, 0) << "only when the outermost unit ends";
    EXPECT_EQ(kindOf([&] { outer.commit(); }), ErrorKind::Misuse);
    EXPECT_EQ(taken, 1);
}

TEST_F(Pages, AUnitThatChangesNothingDoesNotTouchTheFile) {
    const auto file = open();
    struct stat before {};
    ASSERT_EQ(::stat(path_.c_str(), &before), 0);
    {
        WriteScope unit(file);
        setWord(file->edit(5), 1005);
        unit.commit();
    }
    struct stat after {};
    ASSERT_EQ(::stat(path_.c_str(), &after), 0);
    EXPECT_EQ(before.st_mtim.tv_sec, after.st_mtim.tv_sec);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_EQ(commitSlot(), 0x0100);
}

TEST_F(Pages, EachCommitCountsUpTheCommitSlotAndLeavesNothingBeside) {
    const auto file = open();
    change(file, 3, 1);
    EXPECT_EQ(commitSlot(), 0x0101);
    change(file, 3, 2);
    change(file, 0, 3);
    EXPECT_EQ(commitSlot(), 0x0103);
    EXPECT_EQ(word(file, 0), 3u);
    EXPECT_EQ(filesBeside(), std::vector<std::string>{"gem.mdb"});
    const ReadScope scope(file);
    EXPECT_EQ(file->read(0)[commit_slots::kOffset], 0x03) << "the cached header follows";
}

TEST_F(Pages, ChangesFromOutsideAreSeenAtTheNextScope) {
    const auto file = open();
    std::uint64_t version = 0;
    {
        const ReadScope scope(file);
        version = file->version();
        EXPECT_EQ(wordOf(file->read(9)), 1009u);
    }
    changeFromOutside(9, 9);
    {
        const ReadScope scope(file);
        EXPECT_EQ(wordOf(file->read(9)), 9u);
        EXPECT_NE(file->version(), version);
        version = file->version();
    }
    fs::resize_file(path_, (kCount + 2) * kPageSize);
    const ReadScope scope(file);
    EXPECT_EQ(file->pageCount(), kCount + 2);
    EXPECT_NE(file->version(), version);
}

TEST_F(Pages, ChangesFromOutsideAreSeenHoweverQuicklyTheyFollow) {
    const auto file = open();
    for (std::uint64_t round = 0; round < 200; ++round) {
        changeFromOutside(9, round);
        const ReadScope scope(file);
        ASSERT_EQ(wordOf(file->read(9)), round);
    }
}

TEST_F(Pages, OwnCommitsKeepTheVersionAndWhatIsCached) {
    const auto file = open();
    std::uint64_t version = 0;
    {
        const ReadScope scope(file);
        version = file->version();
    }
    for (std::uint64_t i = 0; i < 5; ++i) change(file, 3, i);
    const ReadScope scope(file);
    EXPECT_EQ(file->version(), version);
}

TEST_F(Pages, AReplacedFileIsNotMistakenForTheOldOne) {
    const auto file = open();
    EXPECT_EQ(word(file, 1), 1001u);
    const fs::path other = scratch_.path() / "other";
    fs::copy_file(path_, other);
    fs::rename(other, path_);
    EXPECT_EQ(kindOf([&] { const ReadScope scope(file); }), ErrorKind::FileNotFound);
    EXPECT_EQ(kindOf([&] { const WriteScope scope(file); }), ErrorKind::FileNotFound);
    EXPECT_EQ(word(open(), 1), 1001u) << "opening again leads to the new one";
}

TEST_F(Pages, SpansLastUntilTheScopeEndsHoweverManyPagesAreRead) {
    const auto file = open();
    const ReadScope outer(file);
    std::vector<PageBytes> seen;
    for (PageNumber page = 0; page < kCount; ++page) {
        const ReadScope inner(file);
        seen.push_back(file->read(page));
    }
    for (PageNumber page = 0; page < kCount; ++page) EXPECT_EQ(wordOf(seen[page]), 1000 + page);
}

TEST_F(Pages, AFileCutWithinAPageIsReadButNotWritten) {
    fs::resize_file(path_, 10 * kPageSize + 100);
    const auto file = open();
    EXPECT_EQ(word(file, 9), 1009u);
    const ReadScope scope(file);
    EXPECT_EQ(file->pageCount(), 10u);
    EXPECT_EQ(file->byteSize(), 10 * kPageSize + 100);
    EXPECT_EQ(kindOf([&] { (void)file->read(10); }), ErrorKind::Corrupt);
    EXPECT_EQ(kindOf([&] { const WriteScope unit(file); }), ErrorKind::Corrupt);
    EXPECT_EQ(wordOf(file->read(8)), 1008u) << "reading goes on after the refusal";
}

TEST_F(Pages, ARefusedUnitHoldsNoLock) {
    fs::resize_file(path_, 10 * kPageSize + 100);
    const auto file = open();
    EXPECT_EQ(kindOf([&] { const WriteScope unit(file); }), ErrorKind::Corrupt);
    const auto other = FileSystem::posix().open(path_, FileSystem::Mode::ReadWrite);
    EXPECT_FALSE(other->lockedElsewhere({0, 0}, LockMode::Exclusive));
}

TEST_F(Pages, HoldNoLockOutsideOfScopes) {
    const auto file = open();
    change(file, 1, 1);
    (void)word(file, 2);
    { const WriteScope abandoned(file); }
    const auto other = FileSystem::posix().open(path_, FileSystem::Mode::ReadWrite);
    EXPECT_FALSE(other->lockedElsewhere({0, 0}, LockMode::Exclusive));
    const ReadScope scope(file);
    EXPECT_TRUE(other->lockedElsewhere({0, 0}, LockMode::Exclusive));
}

TEST_F(Pages, OpeningNamesWhatIsWrongWithAPath) {
    const auto kind = [&](const fs::path& path) {
        return kindOf([&] { (void)PageFile::open(path, Access::ReadWrite); });
    };
    EXPECT_EQ(kind(scratch_.path() / "none.mdb"), ErrorKind::FileNotFound);
    EXPECT_EQ(kind(scratch_.path() / "none" / "gem.mdb"), ErrorKind::BadPath);
    EXPECT_EQ(kind(path_ / "gem.mdb"), ErrorKind::BadPath);
    EXPECT_EQ(kind(scratch_.path()), ErrorKind::BadPath);
    EXPECT_EQ(kind(scratch_.path() / std::string(300, 'x')), ErrorKind::BadPath);
    EXPECT_EQ(kind(""), ErrorKind::FileNotFound);
    const fs::path pipe = scratch_.path() / "pipe.mdb";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(kind(pipe), ErrorKind::NotADatabase);
}

TEST_F(Pages, ASymbolicLinkLeadsToTheFileAndItsFolder) {
    const fs::path elsewhere = scratch_.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::create_symlink(path_, elsewhere / "link.mdb");
    const auto file = PageFile::open(elsewhere / "link.mdb", Access::ReadWrite);
    EXPECT_EQ(file->path(), path_);
}

TEST_F(Pages, CreatingNeverOverwrites) {
    const std::vector<std::uint8_t> page(kPageSize);
    EXPECT_EQ(kindOf([&] { PageFile::create(path_, page); }), ErrorKind::BadPath);
    EXPECT_EQ(fs::file_size(path_), kCount * kPageSize);
    EXPECT_EQ(kindOf([&] { PageFile::create(scratch_.path() / "no" / "x.mdb", page); }),
              ErrorKind::FileNotFound);
    EXPECT_EQ(filesBeside(), std::vector<std::string>{"gem.mdb"});
}

TEST_F(Pages, AFileWithoutWriteBitsIsReadOnlyForEverybody) {
    fs::permissions(path_, fs::perms::owner_read);
    const auto file = open();
    EXPECT_EQ(file->access(), Access::ReadOnly);
    EXPECT_EQ(word(file, 3), 1003u);
    EXPECT_EQ(kindOf([&] { const WriteScope unit(file); }), ErrorKind::ReadOnly);
    EXPECT_EQ(word(file, 3), 1003u);
}

TEST_F(Pages, AFolderWithoutWriteBitsMakesItsFilesReadOnly) {
    fs::permissions(scratch_.path(), fs::perms::owner_read | fs::perms::owner_exec);
    const auto file = open();
    EXPECT_EQ(file->access(), Access::ReadOnly);
    EXPECT_EQ(word(file, 3), 1003u);
    EXPECT_EQ(kindOf([&] { const WriteScope unit(file); }), ErrorKind::ReadOnly);
    fs::permissions(scratch_.path(), fs::perms::owner_all);
    change(file, 3, 3);
    EXPECT_EQ(word(file, 3), 3u) << "the folder was opened up again";
}

TEST_F(Pages, AReaderRefusesToWriteUntilAWriterJoins) {
    const auto reader = open(Access::ReadOnly);
    EXPECT_EQ(reader->access(), Access::ReadOnly);
    EXPECT_EQ(kindOf([&] { const WriteScope unit(reader); }), ErrorKind::ReadOnly);
    const auto writer = open(Access::ReadWrite);
    EXPECT_EQ(writer->access(), Access::ReadWrite);
    change(writer, 3, 3);
    EXPECT_EQ(word(reader, 3), 3u);
}

TEST(ReadAheadTest, FollowsSeveralRunsWithGapsAtOnce) {
    ReadAhead ahead;
    PageNumber low = 100;
    PageNumber high = 5000;
    for (int step = 0; step < 20; ++step) {
        for (PageNumber* run : {&low, &high}) {
            const PageNumber count = ahead.pagesFrom(*run);
            ahead.fetchedUpTo(*run + count);
            *run += count + 3;
            EXPECT_LE(count, ReadAhead::kMost);
            EXPECT_TRUE(step == 0 || count > 1);
        }
    }
    EXPECT_GT(low, 100 + 15 * ReadAhead::kMost);
    EXPECT_GT(high, 5000 + 15 * ReadAhead::kMost);
}

TEST(ReadAheadTest, TakesScatteredPagesOneByOne) {
    ReadAhead ahead;
    for (PageNumber page = 1000; page < 200000; page = page * 5 / 3) {
        EXPECT_EQ(ahead.pagesFrom(page), 1u);
        ahead.fetchedUpTo(page + 1);
    }
}

TEST(PageCacheTest, KeepsNoMoreCleanPagesThanItsLimit) {
    PageCache cache(8);
    for (PageNumber page = 0; page < 100; ++page) {
        (void)cache.add(page);
        cache.release();
    }
    EXPECT_EQ(cache.size(), 8u);
}

TEST(PageCacheTest, GrowsOverTheLimitRatherThanTakeAPageInUse) {
    PageCache cache(8);
    std::vector<PageCache::Frame*> frames;
    for (PageNumber page = 0; page < 50; ++page) {
        frames.push_back(&cache.add(page));
        frames.back()->bytes.fill(static_cast<std::uint8_t>(page));
    }
    for (PageNumber page = 0; page < 50; ++page) {
        EXPECT_EQ(frames[page], cache.find(page));
        EXPECT_EQ(frames[page]->bytes[99], page);
    }
    cache.release();
    EXPECT_EQ(cache.size(), 8u);
}

TEST(PageCacheTest, ChangedPagesSurviveAnyNumberOfReleases) {
    PageCache cache(4);
    PageCache::Frame& changed = cache.add(1);
    changed.bytes.fill(1);
    cache.keepBefore(changed);
    changed.bytes.fill(2);
    (void)cache.append(2000);
    for (PageNumber page = 10; page < 100; ++page) {
        (void)cache.add(page);
        cache.release();
    }
    ASSERT_EQ(cache.find(1), &changed);
    EXPECT_EQ(changed.bytes[0], 2);
    EXPECT_EQ(cache.changedPages().size(), 2u);
    cache.undoChanges();
    EXPECT_EQ(cache.find(1)->bytes[0], 1);
    EXPECT_EQ(cache.find(2000), nullptr);
    EXPECT_FALSE(cache.anyChanges());
}

TEST(PageCacheTest, ARunOfAnyLengthTakesOneMegabyte) {
    PageCache cache;
    for (PageNumber page = 0; page < 5000; ++page) {
        (void)cache.add(page, true);
        if (page % 64 == 0) cache.release();
    }
    EXPECT_LE(cache.size(), PageCache::kPassingLimit + 64);
}

TEST(PageCacheTest, APageOfARunThatIsUsedAllTheTimeDoesNotHoldUpTheOthers) {
    PageCache cache;
    for (PageNumber page = 0; page < 5000; ++page) {
        (void)cache.add(page, true);
        (void)cache.find(0);
        if (page % 64 == 0) cache.release();
    }
    EXPECT_LE(cache.size(), PageCache::kPassingLimit + 2 * 64);
    EXPECT_TRUE(cache.holds(0));
}

TEST(PageCacheTest, ARunLeavesAloneWhatIsUsedOtherwise) {
    PageCache cache;
    (void)cache.add(100000);
    for (PageNumber page = 0; page < 5000; ++page) {
        (void)cache.add(page, true);
        cache.release();
        if (page < 1000) {
            EXPECT_NE(cache.find(7 < page ? 7 : page), nullptr);
        }
    }
    EXPECT_TRUE(cache.holds(100000));
    EXPECT_TRUE(cache.holds(7));
}

TEST(PageCacheTest, PagesUsedAgainAndAgainOutliveThoseReadOnce) {
    PageCache cache(8);
    (void)cache.add(1);
    for (PageNumber page = 100; page < 200; ++page) {
        cache.release();
        EXPECT_NE(cache.find(1), nullptr) << page;
        (void)cache.add(page);
    }
}

}  // namespace
}  // namespace stelvan::jet
