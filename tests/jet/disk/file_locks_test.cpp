// Taking turns: every open file below is a party of its own, as another process would be.
#include "jet/disk/file_locks.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <thread>

#include "jet/disk/error.h"
#include "jet/disk/page_file.h"
#include "jet/disk/user_entry.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class Turns : public ::testing::Test {
protected:
    static constexpr auto kBriefly = 300ms;

    struct Party {
        explicit Party(const fs::path& path)
            : file(FileSystem::posix().open(path, FileSystem::Mode::ReadWrite)),
              locks(*file, path, kBriefly) {}
        std::unique_ptr<OpenFile> file;
        FileLocks locks;
    };

    void SetUp() override { std::ofstream(path_) << "content"; }

    static bool refused(const std::function<void()>& action) {
        try {
            action();
            return false;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Locked);
            EXPECT_EQ(error.subject().empty(), false);
            return true;
        }
    }

    test::ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
};

TEST_F(Turns, ReadersShareTheFileWithOneWaitingWriter) {
    Party first(path_);
    Party second(path_);
    Party writer(path_);
    first.locks.share();
    second.locks.share();
    writer.locks.reserve(false);
    writer.locks.share();
    EXPECT_TRUE(refused([&] { writer.locks.exclude(); })) << "readers are inside";
    first.locks.unshare();
    second.locks.unshare();
    writer.locks.exclude();
    EXPECT_TRUE(refused([&] { first.locks.share(); })) << "the writer is alone";
    writer.locks.readmit();
    first.locks.share();
}

TEST_F(Turns, OnlyOneHasTheWritersTurn) {
    Party first(path_);
    Party second(path_);
    first.locks.reserve(false);
    EXPECT_TRUE(refused([&] { second.locks.reserve(false); }));
    first.locks.unreserve();
    second.locks.reserve(false);
}

TEST_F(Turns, AWriterThatWaitsABitGetsItsTurn) {
    Party first(path_);
    Party second(path_);
    first.locks.reserve(false);
    std::jthread release([&] {
        std::this_thread::sleep_for(50ms);
        first.locks.unreserve();
    });
    second.locks.reserve(false);
}

TEST_F(Turns, WhoWasRefusedDoesNotStandInTheWayAfterwards) {
    Party first(path_);
    Party second(path_);
    Party third(path_);
    first.locks.reserve(false);
    EXPECT_TRUE(refused([&] { second.locks.reserve(false); }));
    first.locks.unreserve();
    third.locks.reserve(false);
    third.locks.share();
    third.locks.exclude();
}

TEST_F(Turns, AReaderDoesNotWaitForAWriterThatWaitsForIt) {
    Party reader(path_);
    Party writer(path_);
    reader.locks.share();
    writer.locks.reserve(false);
    writer.locks.share();
    std::jthread committing([&] { EXPECT_FALSE(refused([&] { writer.locks.exclude(); })); });
    std::this_thread::sleep_for(100ms);
    EXPECT_TRUE(refused([&] { reader.locks.reserve(true); }));
    reader.locks.unshare();
}

TEST_F(Turns, LocksEndWithTheFileThatHeldThem) {
    {
        Party dead(path_);
        dead.locks.reserve(false);
        dead.locks.share();
        dead.locks.exclude();
    }
    Party next(path_);
    next.locks.reserve(false);
    next.locks.share();
    next.locks.exclude();
}

TEST_F(Turns, AWholeFileLockOfAnotherProgramKeepsEverybodyOut) {
    const auto other = FileSystem::posix().open(path_, FileSystem::Mode::ReadWrite);
    ASSERT_TRUE(other->tryLock({0, 0}, LockMode::Exclusive));
    Party party(path_);
    EXPECT_TRUE(refused([&] { party.locks.reserve(false); }));
    other->unlock({0, 0});
    party.locks.reserve(false);
}

class LockFile : public Turns {
protected:
    fs::path lockFile_ = scratch_.path() / "gem.ldb";
    static constexpr std::uint64_t kFirstUser = 0x10000001;
};

TEST_F(LockFile, ListsUsWhileWeWriteAndGoesWithUs) {
    {
        const UserEntry entry(FileSystem::posix(), path_);
        std::ifstream file(lockFile_, std::ios::binary);
        std::string content(100, '\0');
        file.read(content.data(), 100);
        EXPECT_EQ(file.gcount(), 64);
        EXPECT_NE(content[0], '\0') << "the machine's name";
        EXPECT_STREQ(content.c_str() + 32, "Admin");
        const auto other = FileSystem::posix().open(lockFile_, FileSystem::Mode::ReadWrite);
        EXPECT_FALSE(other->tryLock({kFirstUser, 1}, LockMode::Exclusive))
            << "our user byte is held";
        EXPECT_TRUE(other->tryLock({kFirstUser + 1, 1}, LockMode::Exclusive)) << "and no other";
        other->unlock({kFirstUser + 1, 1});
    }
    EXPECT_FALSE(fs::exists(lockFile_));
}

TEST_F(LockFile, OfSomebodyInsideRefusesWriting) {
    std::ofstream(lockFile_) << std::string(128, 'x');
    const auto other = FileSystem::posix().open(lockFile_, FileSystem::Mode::ReadWrite);
    ASSERT_TRUE(other->tryLock({kFirstUser + 41, 1}, LockMode::Exclusive));
    EXPECT_TRUE(refused([&] { UserEntry::requireNobody(FileSystem::posix(), path_); }));
    EXPECT_TRUE(refused([&] { const UserEntry entry(FileSystem::posix(), path_); }));
    EXPECT_TRUE(fs::exists(lockFile_));
}

TEST_F(LockFile, LeftBehindIsReused) {
    std::ofstream(lockFile_) << std::string(128, 'x');
    UserEntry::requireNobody(FileSystem::posix(), path_);
    { const UserEntry entry(FileSystem::posix(), path_); }
    EXPECT_FALSE(fs::exists(lockFile_));
}

TEST_F(LockFile, StaysWhileSomebodyElseHasJoined) {
    std::unique_ptr<OpenFile> other;
    {
        const UserEntry entry(FileSystem::posix(), path_);
        other = FileSystem::posix().open(lockFile_, FileSystem::Mode::ReadWrite);
        ASSERT_TRUE(other->tryLock({kFirstUser + 1, 1}, LockMode::Exclusive));
    }
    EXPECT_TRUE(fs::exists(lockFile_));
}

TEST_F(LockFile, OfAnotherProgramIsFoundWhenAUnitBegins) {
    std::vector<std::uint8_t> pages(2 * kPageSize);
    const fs::path path = scratch_.path() / "model.mdb";
    PageFile::create(path, pages);
    const auto file = PageFile::open(path, Access::ReadWrite);
    const fs::path lockFile = scratch_.path() / "model.ldb";
    std::ofstream(lockFile) << std::string(64, 'x');
    {
        const auto other = FileSystem::posix().open(lockFile, FileSystem::Mode::ReadWrite);
        ASSERT_TRUE(other->tryLock({kFirstUser, 1}, LockMode::Exclusive));
        EXPECT_TRUE(refused([&] { const WriteScope unit(file); }));
        const ReadScope reading(file);
        (void)file->read(1);
    }
    WriteScope unit(file);
    file->edit(1)[0] = 1;
    unit.commit();
}

}  // namespace
}  // namespace stelvan::jet
