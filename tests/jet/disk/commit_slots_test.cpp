#include "jet/disk/commit_slots.h"

#include <gtest/gtest.h>

namespace stelvan::jet {
namespace {

TEST(CommitSlot, CountsOnAndNeverFallsAmongTheNumbersWithAMeaning) {
    EXPECT_EQ(nextCommitSlot(0x0101), 0x0102);
    EXPECT_EQ(nextCommitSlot(0x01FF), 0x0200);
    EXPECT_EQ(nextCommitSlot(0xFFFF), 0x0101);
    EXPECT_EQ(nextCommitSlot(0), 0x0101);
    EXPECT_EQ(nextCommitSlot(1), 0x0101);
}

}  // namespace
}  // namespace stelvan::jet
