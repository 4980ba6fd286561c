#include "jet/index/index_tree.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

#include "jet/check/check_index.h"
#include "tests/jet/memory_pages.h"

namespace stelvan::jet {
namespace {

using test::MemoryPages;

constexpr PageNumber kDefinition = 7;
constexpr PageNumber kRoot = 0;

// Hands out pages of the memory file, those given back first, and notes misuse.
class TestAllocator final : public PageAllocator {
public:
    explicit TestAllocator(PageFile& file) : file_(file) {}

    PageNumber allocate() override {
        PageNumber page = 0;
        if (free_.empty()) {
            page = file_.append();
        } else {
            page = *free_.begin();
            free_.erase(free_.begin());
            const WritablePageBytes bytes = file_.edit(page);
            std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
        }
        used_.insert(page);
        return page;
    }
    void release(PageNumber page) override {
        EXPECT_EQ(used_.erase(page), 1u) << "page " << page << " was not in use";
        free_.insert(page);
    }
    [[nodiscard]] const std::set<PageNumber>& used() const { return used_; }

private:
    PageFile& file_;
    std::set<PageNumber> used_;
    std::set<PageNumber> free_;
};

class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}
    std::uint32_t operator()() { return static_cast<std::uint32_t>(engine_()); }

private:
    std::mt19937 engine_;
};

using Key = std::vector<std::uint8_t>;
using Model = std::set<std::pair<Key, RowId>>;

class IndexTreeTest : public testing::Test {
protected:
    IndexTreeTest() { IndexTree::makeRoot(file_->edit(kRoot), kDefinition); }

    void insert(const Key& key, RowId row) {
        const auto next = model_.lower_bound({key, RowId{}});
        const bool isNew = next == model_.end() || next->first != key;
        ASSERT_EQ(tree_.insert(key, row), isNew);
        model_.insert({key, row});
    }
    void remove(const Key& key, RowId row) {
        tree_.remove(key, row);
        model_.erase({key, row});
    }

    // The tree is sound, holds what the model holds, and owns exactly the pages it was given.
    void check() {
        CheckLog log(true);
        const CheckedTree checked = checkTree(*file_, kRoot, kDefinition, log);
        for (const Finding& finding : log.findings())
            ADD_FAILURE() << finding.page << ": " << finding.text;
        std::set<PageNumber> pages(checked.pages.begin(), checked.pages.end());
        pages.erase(kRoot);
        EXPECT_EQ(pages, allocator_.used());
        Model held;
        for (const CheckedTree::Entry& entry : checked.entries) held.insert({entry.key, entry.row});
        EXPECT_EQ(held, model_);
        EXPECT_EQ(checked.entries.size(), model_.size());
    }

    [[nodiscard]] std::size_t levels() const {
        std::size_t count = 1;
        for (PageNumber page = kRoot;; ++count) {
            const IndexPage now(file_->read(page), page, kDefinition);
            if (now.isLeaf()) return count;
            page = now.tail();
        }
    }

    // Many insertions and removals; the share of insertions changes, so that the tree grows and
    // shrinks.
    void runRandomly(Random& random, int rounds, const std::function<Key()>& makeKey) {
        for (int round = 0; round < rounds; ++round) {
            const unsigned insertions = round % 4 == 3 ? 20 : 75;
            for (int i = 0; i < 400 && !HasFatalFailure(); ++i) {
                if (model_.empty() || random() % 100 < insertions) {
                    const RowId row{static_cast<PageNumber>(random() % 5000),
                                    static_cast<std::uint8_t>(random())};
                    const Key key = makeKey();
                    if (!model_.contains({key, row})) insert(key, row);
                } else {
                    auto victim = model_.lower_bound({makeKey(), RowId{}});
                    if (victim == model_.end()) victim = model_.begin();
                    const auto [key, row] = *victim;
                    remove(key, row);
                }
            }
            check();
            if (HasFailure()) return;
        }
    }

    void removeAll() {
        int count = 0;
        while (!model_.empty()) {
            const auto [key, row] = count % 2 == 0 ? *model_.begin() : *model_.rbegin();
            remove(key, row);
            if (++count % 500 == 0) check();
        }
        check();
        EXPECT_TRUE(allocator_.used().empty());
        EXPECT_EQ(levels(), 1u);
    }

    std::shared_ptr<MemoryPages> file_ = std::make_shared<MemoryPages>(1);
    WriteScope scope_{file_};
    TestAllocator allocator_{*file_};
    IndexTree tree_{*file_, kRoot, kDefinition, &allocator_};
    Model model_;
};

Key numberKey(std::uint32_t number) {
    return {0x7F, static_cast<std::uint8_t>(number >> 24), static_cast<std::uint8_t>(number >> 16),
            static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)};
}

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

TEST_F(IndexTreeTest, AKeyThatIsTooLongIsRefused) {
    try {
        tree_.insert(Key(kMaxIndexEntry, 0x20), {1, 0});
        FAIL() << "the key was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::RowTooLarge);
    }
    check();
}

TEST_F(IndexTreeTest, WhatIsThereAlreadyOrNotThereIsDamage) {
    insert(numberKey(1), {1, 0});
    EXPECT_THROW(tree_.insert(numberKey(1), {1, 0}), Error);
    EXPECT_THROW(tree_.remove(numberKey(1), {1, 1}), Error);
    EXPECT_THROW(tree_.remove(numberKey(2), {1, 0}), Error);
    check();
}

TEST_F(IndexTreeTest, ATreeForReadingCannotBeChanged) {
    IndexTree reading(*file_, kRoot, kDefinition);
    EXPECT_THROW(reading.insert(numberKey(1), {1, 0}), Error);
}

TEST_F(IndexTreeTest, AnIndexOfAnotherTableIsNotRead) {
    EXPECT_THROW(static_cast<void>(IndexTree(*file_, kRoot, kDefinition + 1).find(numberKey(1))),
                 Error);
}

TEST_F(IndexTreeTest, LeavesThatLeadBackAreFoundOut) {
    for (std::uint32_t i = 0; i < 2000; ++i) insert(numberKey(i), {i + 1, 0});
    for (const PageNumber page : allocator_.used())
        putU32(file_->edit(page), index_page::kNext, page);
    TreeCursor cursor = tree_.all();
    EXPECT_THROW(while (cursor.next()){}, Error);
}

TEST_F(IndexTreeTest, ANodeThatIsItsOwnChildIsFoundOut) {
    for (std::uint32_t i = 0; i < 2000; ++i) insert(numberKey(i), {i + 1, 0});
    putU32(file_->edit(kRoot), index_page::kTailChild, kRoot);
    EXPECT_THROW(static_cast<void>(tree_.find(numberKey(99999))), Error);
    EXPECT_THROW(tree_.insert(numberKey(99999), {1, 0}), Error);
}

TEST_F(IndexTreeTest, NoiseInAnIndexPageNeverLeadsOutOfIt) {
    for (std::uint32_t i = 0; i < 3000; ++i) insert(numberKey(i * 5), {i + 1, 0});
    Random random(5);
    for (int round = 0; round < 3000; ++round) {
        WriteScope attempt(file_);
        const PageNumber page = random() % file_->pageCount();
        const WritablePageBytes bytes = file_->edit(page);
        const std::vector<std::uint8_t> before(bytes.begin(), bytes.end());
        for (int i = 0; i < 3; ++i)
            bytes[random() % (round % 2 == 0 ? 40 : 600)] = static_cast<std::uint8_t>(random());
        try {
            static_cast<void>(tree_.find(numberKey(random() % 15000)));
            TreeCursor cursor = tree_.all();
            while (cursor.next()) {
            }
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
        }
        std::copy(before.begin(), before.end(), bytes.begin());
        attempt.commit();
    }
    check();
}

}  // namespace
}  // namespace stelvan::jet
