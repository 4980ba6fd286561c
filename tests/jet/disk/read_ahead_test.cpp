#include "jet/disk/read_ahead.h"

#include <gtest/gtest.h>

namespace stelvan::jet {
namespace {

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

}  // namespace
}  // namespace stelvan::jet
