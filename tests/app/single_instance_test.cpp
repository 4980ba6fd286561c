// One copy for each user of the machine.
#include "app/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/scratch_dir.h"

namespace stelvan::app {
namespace {

TEST(SingleInstance, SecondCopyIsRefusedWhileTheFirstRuns) {
    const test::ScratchDir scratch;
    SingleInstance second(scratch.path() / "state");
    {
        SingleInstance first(scratch.path() / "state");
        EXPECT_TRUE(first.acquire());
        EXPECT_TRUE(first.acquire());
        EXPECT_FALSE(second.acquire());
    }
    EXPECT_TRUE(second.acquire());
}

TEST(SingleInstance, AnotherUsersCopyDoesNotCount) {
    const test::ScratchDir scratch;
    SingleInstance mine(scratch.path() / "mine");
    SingleInstance theirs(scratch.path() / "theirs");
    EXPECT_TRUE(mine.acquire());
    EXPECT_TRUE(theirs.acquire());
}

TEST(SingleInstance, AFolderWhereOthersMayWriteProvesNothing) {
    const test::ScratchDir scratch;
    const auto folder = scratch.path() / "shared";
    std::filesystem::create_directory(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    SingleInstance planted(folder);
    SingleInstance mine(folder);
    EXPECT_TRUE(planted.acquire());
    EXPECT_TRUE(mine.acquire()) << "nobody else can keep the program from starting";
}

TEST(SingleInstance, ALinkInPlaceOfTheLockIsNotFollowed) {
    const test::ScratchDir scratch;
    const auto target = scratch.path() / "precious";
    std::filesystem::create_symlink(target, scratch.path() / "stelvan.lock");
    std::filesystem::permissions(scratch.path(), std::filesystem::perms::owner_all);
    SingleInstance copy(scratch.path());
    EXPECT_TRUE(copy.acquire());
    EXPECT_FALSE(std::filesystem::exists(target));
}

TEST(SingleInstance, KilledCopyLeavesNothingBehind) {
    const test::ScratchDir scratch;
    const auto& name = scratch.path();
    std::filesystem::permissions(name, std::filesystem::perms::owner_all);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        SingleInstance first(name);
        const char held = first.acquire() ? 'y' : 'n';
        (void)!::write(ready[1], &held, 1);
        for (;;) ::pause();
    }
    char held = 'n';
    ASSERT_EQ(::read(ready[0], &held, 1), 1);
    EXPECT_EQ(held, 'y');
    SingleInstance next(name);
    EXPECT_FALSE(next.acquire());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(next.acquire());
    ::close(ready[0]);
    ::close(ready[1]);
}

}  // namespace
}  // namespace stelvan::app
