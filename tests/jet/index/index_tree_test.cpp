// Entries that come and go, against a set.
#include "jet/index/index_tree.h"

#include <gtest/gtest.h>

#include "tests/jet/index/index_tree_fixture.h"

namespace stelvan::jet {
namespace {

TEST_F(IndexTreeTest, ANewIndexIsAnEmptyLeaf) {
    check();
    EXPECT_FALSE(tree_.all().next());
    EXPECT_EQ(tree_.find(numberKey(1)), std::nullopt);
    const PageBytes root = file_->read(kRoot);
    EXPECT_EQ(root[0], 4);
    EXPECT_EQ(u16At(root, index_page::kFree), 3616);
}

TEST_F(IndexTreeTest, RisingKeysFillTheirPages) {
    for (std::uint32_t i = 0; i < 20000; ++i)
        insert(numberKey(i), {i / 50 + 1, static_cast<std::uint8_t>(i % 50)});
    check();
    EXPECT_EQ(levels(), 2u);
    // Nine bytes for each entry, and hardly any room left free.
    EXPECT_LE(allocator_.used().size(), 20000u * 9 / 3616 + 5);
}

TEST_F(IndexTreeTest, FallingKeysToo) {
    for (std::uint32_t i = 20000; i-- > 0;)
        insert(numberKey(i), {i / 50 + 1, static_cast<std::uint8_t>(i % 50)});
    check();
    removeAll();
}

TEST_F(IndexTreeTest, EqualKeysStandInTheOrderOfTheirRows) {
    for (std::uint32_t i = 0; i < 3000; ++i) {
        const std::uint32_t row = i * 7919 % 3000;
        insert(numberKey(row % 3), {row / 100 + 1, static_cast<std::uint8_t>(row % 100)});
    }
    check();
    TreeCursor cursor = tree_.withKey(numberKey(1));
    RowId before;
    int count = 0;
    for (; cursor.next(); ++count) {
        EXPECT_LT(before, cursor.rowId());
        before = cursor.rowId();
    }
    EXPECT_EQ(count, 1000);
}

TEST_F(IndexTreeTest, RangesBeginAndEndWhereTheyShould) {
    for (std::uint32_t i = 0; i < 5000; ++i) insert(numberKey(2 * i), {i + 1, 0});
    TreeCursor from = tree_.startingAt(numberKey(4001));
    ASSERT_TRUE(from.next());
    EXPECT_EQ(from.rowId(), (RowId{2002, 0}));

    const Key key = numberKey(0x1234);
    TreeCursor block = tree_.withPrefix(Bytes(key).first(4));
    int count = 0;
    while (block.next()) ++count;
    EXPECT_EQ(count, 128) << "even numbers from 0x1200 to 0x12FF";
    EXPECT_FALSE(block.next()) << "the end stays the end";
    EXPECT_FALSE(tree_.withKey(numberKey(4001)).next());
    EXPECT_FALSE(tree_.startingAt(numberKey(99999)).next());
}

TEST_F(IndexTreeTest, CountsItsEntriesAndKnowsTheLastBelowAKey) {
    const auto count = [&] { return tree_.countEntries([] {}); };
    EXPECT_EQ(count(), 0u);
    EXPECT_FALSE(tree_.lastBelow(numberKey(5)).has_value());
    Random random(3);
    for (std::uint32_t i = 0; i < 6000; ++i)
        insert(numberKey(random() % 9000), {i, static_cast<std::uint8_t>(i)});
    EXPECT_EQ(count(), model_.size());
    for (std::uint32_t number = 0; number < 9100; number += 13) {
        const Key bound = numberKey(number);
        const auto next = model_.lower_bound({bound, RowId{}});
        const auto found = tree_.lastBelow(bound);
        ASSERT_EQ(found.has_value(), next != model_.begin()) << number;
        if (found) {
            EXPECT_EQ(rowOfEntry(*found), std::prev(next)->second) << number;
        }
    }
}

TEST_F(IndexTreeTest, KnowsWhetherAnotherRowHasTheKeyAcrossLeaves) {
    for (std::uint32_t i = 0; i < 2000; ++i) insert(numberKey(i / 2), {i + 1, 0});
    for (std::uint32_t i = 0; i < 2000; ++i) {
        ASSERT_EQ(tree_.holdsOther(numberKey(i / 2), {i + 1, 0}), i % 2 == 0);
        if (i % 2 == 0) remove(numberKey(i / 2), {i + 1, 0});
    }
    for (std::uint32_t i = 1; i < 2000; i += 2)
        ASSERT_FALSE(tree_.holdsOther(numberKey(i / 2), {i + 1, 0}));
    EXPECT_FALSE(tree_.holdsOther(numberKey(5000), {1, 0}));
}

TEST_F(IndexTreeTest, ThatLosesMostOfItsEntriesGivesMostOfItsPagesBack) {
    Random random(5);
    for (std::uint32_t i = 0; i < 20000; ++i) insert(numberKey(i), {i, 0});
    const std::size_t full = allocator_.used().size();
    for (std::uint32_t i = 0; i < 20000; ++i)
        if (random() % 10 != 0) remove(numberKey(i), {i, 0});
    check();
    EXPECT_LT(allocator_.used().size(), full / 4);
}

TEST_F(IndexTreeTest, InSteadyUseDoesNotGrow) {
    Random random(6);
    std::uint32_t next = 0;
    for (; next < 5000; ++next) insert(numberKey(next), {next, 0});
    for (int round = 0; round < 60000; ++round) {
        auto victim = model_.lower_bound({numberKey(random() % next), RowId{}});
        if (victim == model_.end()) victim = model_.begin();
        const auto [key, row] = *victim;
        remove(key, row);
        insert(numberKey(next), {next, 0});
        ++next;
    }
    check();
    constexpr std::size_t kEntrySize = 9;
    EXPECT_LT(allocator_.used().size(), 3 * 5000 * kEntrySize / index_page::kEntriesSize);
}

TEST_F(IndexTreeTest, RandomNumbersAgainstASet) {
    Random random(1);
    runRandomly(random, 30, [&] { return numberKey(random() % 4000); });
    removeAll();
}

TEST_F(IndexTreeTest, RandomKeysOfAllLengthsAgainstASet) {
    Random random(2);
    runRandomly(random, 40, [&] {
        Key key(random() % 8 == 0 ? random() % 900 : random() % 30, 0x40);
        for (std::uint8_t& byte : key) byte = static_cast<std::uint8_t>(0x40 + random() % 3);
        key.push_back(0);
        return key;
    });
    removeAll();
}

TEST_F(IndexTreeTest, LongKeysWithLongPrefixesMakeDeepTrees) {
    Random random(3);
    runRandomly(random, 40, [&] {
        Key key(600 + random() % 400, static_cast<std::uint8_t>(0x30 + random() % 2));
        for (std::size_t i = 0; i < 12; ++i)
            key[key.size() - 1 - i * (1 + random() % 40)] = static_cast<std::uint8_t>(random());
        key.push_back(0);
        return key;
    });
    EXPECT_GE(levels(), 3u);
    removeAll();
}

TEST_F(IndexTreeTest, KeysOfTheLargestSizeStillFindRoom) {
    Random random(4);
    runRandomly(random, 12, [&] {
        Key key(kMaxIndexEntry - 4, 0x20);
        for (std::uint8_t& byte : key) byte = static_cast<std::uint8_t>(1 + random() % 250);
        return key;
    });
    EXPECT_GE(levels(), 4u);
    removeAll();
}

TEST_F(IndexTreeTest, AKeyThatWasLookedForIsAddedWhereItWasNotFound) {
    Random random(6);
    for (std::uint32_t i = 0; i < 5000; ++i) {
        const Key key = numberKey(random() % 4000);
        IndexPlace place;
        const std::optional<RowId> found = tree_.find(key, place);
        ASSERT_EQ(found, tree_.find(key));
        if (found) continue;
        ASSERT_TRUE(tree_.insert(key, {i + 1, 0}, place));
        model_.insert({key, {i + 1, 0}});
    }
    check();
}

TEST_F(IndexTreeTest, APlaceThatIsNoLongerRightIsRefused) {
    for (std::uint32_t i = 0; i < 10; ++i) insert(numberKey(10 * i), {i + 1, 0});
    IndexPlace place;
    ASSERT_EQ(tree_.find(numberKey(55), place), std::nullopt);
    insert(numberKey(52), {100, 0});
    try {
        tree_.insert(numberKey(55), {101, 0}, place);
        FAIL() << "the entry stands in front of a lower one";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Misuse);
    }
    check();
}

}  // namespace
}  // namespace stelvan::jet
