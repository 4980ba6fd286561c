// What an index refuses, and damage that it must find out.
#include <gtest/gtest.h>

#include "jet/index/index_tree.h"
#include "tests/jet/index/index_tree_fixture.h"

namespace stelvan::jet {
namespace {

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
