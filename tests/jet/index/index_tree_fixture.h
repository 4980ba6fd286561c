// An index on memory pages, beside a set that must always hold the same entries.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

#include "jet/check/check_index.h"
#include "jet/index/index_page.h"
#include "jet/index/index_tree.h"
#include "tests/jet/memory_pages.h"

namespace stelvan::jet {

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

inline Key numberKey(std::uint32_t number) {
    return {0x7F, static_cast<std::uint8_t>(number >> 24), static_cast<std::uint8_t>(number >> 16),
            static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)};
}

}  // namespace stelvan::jet
