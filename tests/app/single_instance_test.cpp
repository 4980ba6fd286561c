// One copy for each user of the machine.
#include "app/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace stelvan::app {
namespace {

std::string uniqueName() {
    static int count = 0;
    return "stelvan-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

TEST(SingleInstance, SecondCopyIsRefusedWhileTheFirstRuns) {
    const std::string name = uniqueName();
    SingleInstance second(name);
    {
        SingleInstance first(name);
        EXPECT_TRUE(first.acquire());
        EXPECT_TRUE(first.acquire());
        EXPECT_FALSE(second.acquire());
    }
    EXPECT_TRUE(second.acquire());
}

TEST(SingleInstance, AnotherUsersCopyDoesNotCount) {
    SingleInstance mine(uniqueName());
    SingleInstance theirs(uniqueName());
    EXPECT_TRUE(mine.acquire());
    EXPECT_TRUE(theirs.acquire());
}

TEST(SingleInstance, KilledCopyLeavesNothingBehind) {
    const std::string name = uniqueName();
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
