#include "jet/disk/page_cache.h"

#include <gtest/gtest.h>

#include <cstring>

namespace stelvan::jet {
namespace {

TEST(PageCacheTest, KeepsNoMoreCleanPagesThanItsLimit) {
    PageCache cache(8);
    for (PageNumber page = 0; page < 100; ++page) {
        (void)cache.add(page);
        cache.release();
    }
    EXPECT_EQ(cache.size(), 8u);
    EXPECT_EQ(cache.checkInvariants(), 0);
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
    EXPECT_EQ(cache.checkInvariants(), 0);
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
    EXPECT_EQ(cache.checkInvariants(), 0);
}

TEST(PageCacheTest, ARunOfAnyLengthTakesOneMegabyte) {
    PageCache cache;
    for (PageNumber page = 0; page < 5000; ++page) {
        (void)cache.add(page, true);
        if (page % 64 == 0) cache.release();
    }
    EXPECT_LE(cache.size(), PageCache::kPassingLimit + 64);
    EXPECT_EQ(cache.checkInvariants(), 0);
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
    EXPECT_EQ(cache.checkInvariants(), 0);
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
    EXPECT_EQ(cache.checkInvariants(), 0);
}

TEST(PageCacheTest, PagesUsedAgainAndAgainOutliveThoseReadOnce) {
    PageCache cache(8);
    (void)cache.add(1);
    for (PageNumber page = 100; page < 200; ++page) {
        cache.release();
        EXPECT_NE(cache.find(1), nullptr) << page;
        (void)cache.add(page);
    }
    EXPECT_EQ(cache.checkInvariants(), 0);
}

}  // namespace
}  // namespace stelvan::jet
