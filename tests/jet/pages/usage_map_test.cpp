#include "jet/pages/usage_map.h"

#include <gtest/gtest.h>

#include <set>

#include "jet/disk/memory_pages.h"
#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/page_allocation.h"

namespace stelvan::jet {
namespace {

/// Pages 0 to 3: header, global map, and two map pages.
class Maps : public testing::Test {
protected:
    std::shared_ptr<MemoryPages> file_ = std::make_shared<MemoryPages>(4);
    WriteScope scope_{file_};

    void SetUp() override {
        makeMap(kGlobalMapPage, UsageMapEditor::emptyMap());
        for (PageNumber page = 4; page < 512; ++page)
            UsageMapEditor(*file_, {1, 0}).add(page, source_);
        makeMap(2, UsageMapEditor::emptyMap());
    }

    void makeMap(PageNumber page, const Blob& map) {
        DataPageEditor::format(file_->edit(page), 0);
        static_cast<void>(DataPageEditor(page, file_->edit(page)).append(map));
        static_cast<void>(DataPageEditor(page, file_->edit(page)).append(map));
    }

    [[nodiscard]] std::set<PageNumber> members(RecordPointer at) const {
        std::set<PageNumber> all;
        const UsageMap map(*file_, at);
        EXPECT_EQ(map.checkInvariants(), "");
        for (auto page = map.next(0); page; page = map.next(*page + 1)) all.insert(*page);
        return all;
    }

    class NoPages final : public BitmapPageSource {
        PageNumber takeBitmapPage() override {
            throw Error(ErrorKind::Misuse, "no page was expected");
        }
    };
    NoPages source_;
    UsageMapEditor map_{*file_, {2, 0}};
};

TEST(UsageMapInvariants, ABrokenMapIsTold) {
    const auto file = std::make_shared<MemoryPages>(4);
    const WriteScope scope(file);
    const auto faultOf = [&](const Blob& map) {
        DataPageEditor::format(file->edit(2), 0);
        const std::uint8_t slot = DataPageEditor(2, file->edit(2)).append(map);
        return UsageMap(*file, {2, slot}).checkInvariants();
    };
    file->edit(3)[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
    EXPECT_EQ(faultOf({0, 8, 0, 0, 0, 1}), "");
    EXPECT_EQ(faultOf({0, 4, 0, 0, 0, 1}), "its bits do not begin at a multiple of 8");
    EXPECT_EQ(faultOf({1, 3, 0, 0, 0, 0, 0, 0, 0}), "");
    EXPECT_EQ(faultOf({1, 3, 0, 0, 0, 3, 0, 0, 0}), "a page of bits is referred to twice");
    EXPECT_EQ(faultOf({1, 1, 0, 0, 0, 0, 0, 0, 0}), "page 1 holds no bits");
    EXPECT_EQ(faultOf({1, 9, 0, 0, 0, 0, 0, 0, 0}), "page 9 holds no bits");
}

TEST_F(Maps, KeepPagesInTheirRowWhileTheyAreClose) {
    for (const PageNumber page : {7U, 8U, 511U}) map_.add(page, source_);
    EXPECT_EQ(members({2, 0}), (std::set<PageNumber>{7, 8, 511}));
    map_.remove(8);
    map_.remove(9);
    EXPECT_FALSE(map_.contains(8));
    EXPECT_TRUE(map_.contains(511));
    EXPECT_EQ(members({2, 1}), std::set<PageNumber>{}) << "the neighbour is untouched";
}

TEST_F(Maps, MoveTheirWindowToWhereThePagesAre) {
    map_.add(1000, source_);
    map_.add(1400, source_);
    EXPECT_FALSE(map_.isReference());
    EXPECT_EQ(members({2, 0}), (std::set<PageNumber>{1000, 1400}));
}

TEST_F(Maps, ReferToBitmapPagesWhenTheRowIsTooSmall) {
    FreePages free(*file_);
    const std::set<PageNumber> pages = {3, 600, 5000, 32735, 32736, 100000, 500000};
    for (const PageNumber page : pages) map_.add(page, free);
    EXPECT_TRUE(map_.isReference());
    EXPECT_EQ(members({2, 0}), pages);
    EXPECT_EQ(map_.bitmapPages().size(), 4U);
    map_.remove(32736);
    EXPECT_FALSE(map_.contains(32736));
    EXPECT_TRUE(map_.contains(32735));
}

TEST_F(Maps, OfFreePagesGiveEachPageOnce) {
    FreePages free(*file_);
    std::set<PageNumber> taken;
    for (int i = 0; i < 2000; ++i) ASSERT_TRUE(taken.insert(free.take()).second) << i;
    EXPECT_EQ(*taken.begin(), 4U);
    EXPECT_EQ(file_->pageCount(), 2004U);
    free.give(100, PageType::FreedData);
    free.give(1500, std::nullopt);
    EXPECT_EQ(file_->read(100)[0], 9);
    EXPECT_EQ(free.take(), 100U);
    EXPECT_EQ(free.take(), 1500U);
    EXPECT_EQ(free.take(), 2004U);
}

TEST_F(Maps, OfFreePagesReferToBitmapPagesInAVeryLargeFile) {
    FreePages free(*file_);
    std::set<PageNumber> taken;
    constexpr std::size_t kMany = 40000;
    for (std::size_t i = 0; i < kMany; ++i) ASSERT_TRUE(taken.insert(free.take()).second) << i;
    EXPECT_TRUE(UsageMap(*file_, {kGlobalMapPage, kGlobalMapRow}).isReference());
    for (const PageNumber bitmap :
         UsageMap(*file_, {kGlobalMapPage, kGlobalMapRow}).bitmapPages()) {
        EXPECT_FALSE(taken.contains(bitmap));
    }
    free.give(35000, std::nullopt);
    EXPECT_EQ(free.take(), 35000U);
}

TEST_F(Maps, ThatAreDamagedSaySo) {
    file_->edit(2)[kPageSize - 69] = 7;
    EXPECT_THROW(static_cast<void>(map_.next(0)), Error);
    file_->edit(2)[kPageSize - 69] = 1;
    putU32(file_->edit(2), kPageSize - 68, 3);
    EXPECT_THROW(static_cast<void>(map_.next(0)), Error) << "page 3 is no bitmap page";
    EXPECT_THROW(static_cast<void>(UsageMap(*file_, {2, 9}).next(0)), Error);
}

}  // namespace
}  // namespace stelvan::jet
