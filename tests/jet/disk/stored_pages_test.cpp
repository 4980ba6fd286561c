// What happens when somebody else changes, replaces or guards the file.
#include "jet/disk/stored_pages.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "jet/disk/file_system.h"
#include "tests/jet/disk/pages_fixture.h"

namespace stelvan::jet {
namespace {

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

TEST_F(Pages, ChangesByOthersAreCountedAndOwnOnesAreNot) {
    const auto file = open();
    const auto count = [&] {
        const ReadScope scope(file);
        return file->changesByOthers();
    };
    const std::uint64_t atFirst = count();
    for (std::uint64_t i = 0; i < 5; ++i) {
        change(file, 3, i);
        EXPECT_EQ(count(), atFirst);
    }
    { const WriteScope undone(file); }
    EXPECT_EQ(count(), atFirst);
    changeFromOutside(9, 9);
    const std::uint64_t then = count();
    EXPECT_GT(then, atFirst);
    change(file, 3, 9);
    EXPECT_EQ(count(), then);
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

}  // namespace
}  // namespace stelvan::jet
