#include "jet/pages/data_page.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>

namespace stelvan::jet {
namespace {

using Row = std::vector<std::uint8_t>;

class DataPageTest : public testing::Test {
protected:
    std::array<std::uint8_t, kPageSize> bytes_{};
    DataPageEditor editor_{9, bytes_};

    void SetUp() override { DataPageEditor::format(bytes_, 42); }

    [[nodiscard]] Row rowAt(std::size_t slot) const {
        const Bytes row = DataPage(9, bytes_).row(slot);
        return {row.begin(), row.end()};
    }
    [[nodiscard]] std::size_t freeField() const { return u16At(bytes_, data_page::kFree); }
};

TEST_F(DataPageTest, IsEmptyWhenNew) {
    const DataPage page(9, bytes_);
    EXPECT_EQ(page.owner(), 42U);
    EXPECT_EQ(page.slotCount(), 0U);
    EXPECT_EQ(freeField(), 4082U);
    EXPECT_TRUE(page.empty());
}

TEST_F(DataPageTest, FillsFromTheEndDownwards) {
    EXPECT_EQ(editor_.append(Row{1, 2, 3}), 0);
    EXPECT_EQ(editor_.append(Row{4, 5}), 1);
    EXPECT_EQ(u16At(bytes_, 14), 4093);
    EXPECT_EQ(u16At(bytes_, 16), 4091);
    EXPECT_EQ(freeField(), 4082U - 5 - 4);
    EXPECT_EQ(rowAt(1), (Row{4, 5}));
}

TEST_F(DataPageTest, KeepsOtherRowsAtTheirSlotsWhenOneChanges) {
    for (std::uint8_t i = 0; i < 5; ++i) static_cast<void>(editor_.append(Row(i + 3u, i)));
    editor_.replace(1, Row(100, 9), 0);
    EXPECT_EQ(rowAt(0), Row(3, 0));
    EXPECT_EQ(rowAt(1), Row(100, 9));
    EXPECT_EQ(rowAt(4), Row(7, 4));
    editor_.replace(1, Row(1, 8), data_page::kPointer);
    EXPECT_TRUE(editor_.page().slot(1).pointer());
    EXPECT_EQ(rowAt(4), Row(7, 4));
    editor_.erase(2);
    EXPECT_TRUE(editor_.page().slot(2).deleted());
    EXPECT_EQ(editor_.page().slot(2).length, 0);
    EXPECT_EQ(rowAt(3), Row(6, 3));
}

TEST_F(DataPageTest, RefusesWhatDoesNotFit) {
    static_cast<void>(editor_.append(Row(4000, 1)));
    EXPECT_FALSE(editor_.page().fits(100));
    EXPECT_THROW(static_cast<void>(editor_.append(Row(100, 2))), Error);
    EXPECT_THROW(editor_.replace(0, Row(4081, 2), 0), Error);
    EXPECT_EQ(rowAt(0), Row(4000, 1));
}

TEST_F(DataPageTest, HoldsNoMoreThan255Slots) {
    for (int i = 0; i < 255; ++i) static_cast<void>(editor_.append(Row{1, 2, 3}));
    EXPECT_FALSE(editor_.page().fits(3));
}

TEST_F(DataPageTest, AgreesWithAPlainListWhateverIsDoneToIt) {
    std::mt19937 random(3);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    std::map<std::size_t, Row> expected;
    for (int step = 0; step < 5000; ++step) {
        const Row row(4 + below(200), static_cast<std::uint8_t>(step));
        const std::size_t count = editor_.page().slotCount();
        const std::size_t slot = count == 0 ? 0 : below(count);
        const std::size_t kind = below(4);
        if (kind == 0 && editor_.page().fits(row.size())) {
            expected[editor_.append(row)] = row;
        } else if (kind == 1 && expected.contains(slot)) {
            editor_.erase(slot);
            expected.erase(slot);
        } else if (expected.contains(slot)) {
            const std::size_t old = editor_.page().slot(slot).length;
            if (row.size() <= old + editor_.page().freeBytes()) {
                editor_.replace(slot, row, 0);
                expected[slot] = row;
            }
        }
        for (const auto& [at, content] : expected) ASSERT_EQ(rowAt(at), content) << step;
        ASSERT_EQ(freeField(), editor_.page().freeBytes());
        if (count > 200 && expected.size() < 20) {
            DataPageEditor::format(bytes_, 42);
            expected.clear();
        }
    }
}

TEST_F(DataPageTest, ThatClaimsTooMuchIsDamaged) {
    static_cast<void>(editor_.append(Row{1, 2, 3}));
    static_cast<void>(editor_.append(Row{1, 2, 3}));
    putU16(bytes_, data_page::kSlots, 5000 & data_page::kOffsetMask);
    EXPECT_THROW(static_cast<void>(editor_.page().slot(0)), Error);
    putU16(bytes_, data_page::kSlots, 100);
    EXPECT_THROW(static_cast<void>(editor_.page().slot(1)), Error);
    putU16(bytes_, data_page::kSlotCount, 4000);
    EXPECT_THROW(static_cast<void>(editor_.page()), Error);
    bytes_[0] = 4;
    EXPECT_THROW(static_cast<void>(editor_.page()), Error);
}

}  // namespace
}  // namespace stelvan::jet
