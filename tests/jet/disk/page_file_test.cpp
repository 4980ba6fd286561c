// Scopes, pages and units of work over one file.
#include "jet/disk/page_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "jet/disk/commit_slots.h"
#include "tests/jet/disk/pages_fixture.h"

namespace stelvan::jet {
namespace {

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

TEST_F(Pages, TheMomentIsTheSameAsLongAsTheContentIs) {
    const auto file = open();
    const ReadScope scope(file);
    const std::uint64_t first = file->moment();
    EXPECT_EQ(file->moment(), first);
    {
        WriteScope unit(file);
        setWord(file->edit(7), 7);
        const std::uint64_t within = file->moment();
        EXPECT_NE(within, first);
        EXPECT_NE(file->moment(), within) << "what a unit changes next is not to be told";
        unit.commit();
    }
    const std::uint64_t second = file->moment();
    EXPECT_GT(second, first);
    EXPECT_EQ(file->moment(), second);
    {
        const WriteScope undone(file);
        setWord(file->edit(7), 8);
    }
    EXPECT_GT(file->moment(), second);
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

TEST_F(Pages, EachCommitCountsUpTheCommitSlot) {
    const auto file = open();
    change(file, 3, 1);
    EXPECT_EQ(commitSlot(), 0x0101);
    change(file, 3, 2);
    change(file, 0, 3);
    EXPECT_EQ(commitSlot(), 0x0103);
    EXPECT_EQ(word(file, 0), 3u);
    const ReadScope scope(file);
    EXPECT_EQ(file->read(0)[commit_slots::kOffset], 0x03) << "the cached header follows";
}

}  // namespace
}  // namespace stelvan::jet
