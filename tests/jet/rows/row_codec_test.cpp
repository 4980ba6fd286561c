#include "jet/rows/row_codec.h"

#include <gtest/gtest.h>

#include "jet/rows/row_layout.h"
#include "jet/rows/text.h"

namespace stelvan::jet {
namespace {

using Stored = std::vector<std::uint8_t>;

// Three Text columns, all variable.
RowLayout threeTexts() {
    RowLayout table;
    for (std::uint16_t i = 0; i < 3; ++i) {
        ColumnInfo column;
        column.number = i;
        column.length = 100;
        column.compressed = true;
        table.info.columns.push_back(column);
        ColumnStorage storage;
        storage.variableIndex = i;
        table.storage.push_back(storage);
    }
    table.maxColumns = 3;
    table.variableColumns = 3;
    return table;
}

// Long, Long, Boolean fixed and one Binary, as in the table of access entries.
RowLayout mixed() {
    RowLayout table;
    const ColumnType types[] = {ColumnType::Long, ColumnType::Binary, ColumnType::Long,
                                ColumnType::Boolean};
    const std::uint16_t offsets[] = {0, 0, 4, 0};
    for (std::uint16_t i = 0; i < 4; ++i) {
        ColumnInfo column;
        column.number = i;
        column.type = types[i];
        column.length = types[i] == ColumnType::Long ? 4 : 510;
        column.fixedLength = types[i] != ColumnType::Binary;
        table.info.columns.push_back(column);
        ColumnStorage storage;
        storage.flags = column.fixedLength ? column_flag::kFixed : std::uint8_t{0};
        storage.fixedOffset = offsets[i];
        storage.size = types[i] == ColumnType::Long ? 4 : 0;
        table.storage.push_back(storage);
    }
    table.maxColumns = 4;
    table.variableColumns = 1;
    table.fixedSize = 8;
    return table;
}

const Stored kThreeTexts = {0x03, 0x00, 0xFF, 0xFE, 0x72, 0x6F, 0x77, 0x32, 0x63, 0x6F, 0x6C,
                            0x31, 0xFF, 0xFE, 0x72, 0x6F, 0x77, 0x32, 0x63, 0x6F, 0x6C, 0x33,
                            0x16, 0x00, 0x0C, 0x00, 0x0C, 0x00, 0x02, 0x00, 0x03, 0x00, 0x05};
const Stored kMixed = {0x04, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x06, 0x00,
                       0x64, 0x8B, 0x0C, 0x00, 0x0A, 0x00, 0x01, 0x00, 0x07};

Stored bytesOf(const std::optional<Bytes>& bytes) {
    return bytes ? Stored(bytes->begin(), bytes->end()) : Stored();
}

TEST(Row, GivesVariableColumnsFromItsEnd) {
    const RowLayout table = threeTexts();
    const RowView row(table, kThreeTexts, 7);
    EXPECT_EQ(decodeText(*row.stored(0)), "row2col1");
    EXPECT_FALSE(row.stored(1).has_value());
    EXPECT_EQ(decodeText(*row.stored(2)), "row2col3");
}

TEST(Row, GivesFixedColumnsAndFlags) {
    const RowLayout table = mixed();
    const RowView row(table, kMixed, 7);
    EXPECT_EQ(bytesOf(row.stored(0)), (Stored{2, 0, 0, 0}));
    EXPECT_EQ(bytesOf(row.stored(1)), (Stored{0x64, 0x8B}));
    EXPECT_EQ(bytesOf(row.stored(2)), (Stored{0, 0, 6, 0}));
    EXPECT_FALSE(row.flag(3));
}

/// A row built of the columns of another.
Stored rebuilt(const RowLayout& table, const Stored& stored) {
    const RowView row(table, stored, 7);
    RowBuilder builder(table);
    const Bytes built = builder.build([&](std::size_t column, Blob& out) {
        const auto bytes = row.stored(column);
        if (bytes) out.insert(out.end(), bytes->begin(), bytes->end());
        return bytes.has_value();
    });
    return {built.begin(), built.end()};
}

TEST(Row, IsWrittenAsItIsRead) {
    EXPECT_EQ(rebuilt(threeTexts(), kThreeTexts), kThreeTexts);
    EXPECT_EQ(rebuilt(mixed(), kMixed), kMixed);
}

TEST(Row, KnowsNothingOfColumnsAddedLater) {
    RowLayout table = threeTexts();
    table.maxColumns = 5;
    table.variableColumns = 4;
    ColumnInfo flag;
    flag.number = 3;
    flag.type = ColumnType::Boolean;
    ColumnInfo text;
    text.number = 4;
    table.info.columns.push_back(flag);
    table.info.columns.push_back(text);
    ColumnStorage storage;
    table.storage.push_back(storage);
    storage.variableIndex = 3;
    table.storage.push_back(storage);
    const RowView row(table, kThreeTexts, 7);
    EXPECT_FALSE(row.flag(3));
    EXPECT_FALSE(row.stored(4).has_value());
    EXPECT_TRUE(row.stored(0).has_value());
}

TEST(Row, IgnoresAGapBeforeItsOffsets) {
    Stored gap = kThreeTexts;
    gap.insert(gap.begin() + 22, {0xAA, 0xBB, 0xCC});
    const RowLayout table = threeTexts();
    EXPECT_EQ(decodeText(*RowView(table, gap, 7).stored(2)), "row2col3");
}

TEST(Row, ThatContradictsItselfIsDamagedAndNamesItsPage) {
    const RowLayout table = threeTexts();
    for (std::size_t size = 0; size < kThreeTexts.size(); ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            Stored cut(kThreeTexts.begin(),
                       kThreeTexts.begin() + static_cast<std::ptrdiff_t>(size));
            cut[at] = 0xFF;
            try {
                const RowView row(table, cut, 7);
                for (std::size_t column = 0; column < 3; ++column)
                    static_cast<void>(row.stored(column));
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
                EXPECT_EQ(error.page(), 7U);
            }
        }
    }
}

TEST(StoredValue, RoundTripsForEveryType) {
    const std::pair<ColumnType, Value> values[] = {
        {ColumnType::Byte, std::int32_t{255}},
        {ColumnType::Integer, std::int32_t{-32768}},
        {ColumnType::Long, std::int32_t{-2147483647}},
        {ColumnType::Money, Money{-12345}},
        {ColumnType::Single, 1.5F},
        {ColumnType::Double, -0.1},
        {ColumnType::DateTime, DateTime{-1.25}},
        {ColumnType::Text, std::string("\xE6\x97\xA5")},
        {ColumnType::Binary, Blob{1, 0, 2}},
        {ColumnType::Guid, Guid{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}}},
        {ColumnType::Numeric, Numeric{true, 2, {1, 2, 3, 4}}}};
    Arena arena;
    for (const auto& [type, value] : values) {
        ColumnInfo column;
        column.type = type;
        column.scale = 2;
        Blob stored;
        encodeStored(column, toView(value), stored);
        EXPECT_EQ(toValue(decodeStored(column, stored, arena)), value) << static_cast<int>(type);
    }
}

TEST(StoredValue, KeepsGuidAndDecimalInTheirStoredOrder) {
    ColumnInfo column;
    column.type = ColumnType::Guid;
    Blob stored;
    encodeStored(column, Guid{{0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
                 stored);
    EXPECT_EQ(stored, (Stored{0xDD, 0xCC, 0xBB, 0xAA, 0xFF, 0xEE, 2, 1, 3, 4, 5, 6, 7, 8, 9, 10}));
    column.type = ColumnType::Numeric;
    stored.clear();
    encodeStored(column, Numeric{true, 0, {0, 0, 0, 0}}, stored);
    EXPECT_EQ(stored, Stored(17, 0)) << "zero has no sign";
}

TEST(StoredValue, OfFixedLengthTextIsPaddedAndNeverCompressed) {
    ColumnInfo column;
    column.fixedLength = true;
    column.compressed = true;
    column.length = 8;
    Blob stored;
    encodeStored(column, std::string_view("abc"), stored);
    EXPECT_EQ(stored, (Stored{'a', 0, 'b', 0, 'c', 0, ' ', 0}));
}

TEST(StoredValue, OfTheWrongSizeIsDamaged) {
    Arena arena;
    ColumnInfo column;
    column.type = ColumnType::Long;
    EXPECT_THROW(static_cast<void>(decodeStored(column, Stored{1, 2}, arena)), Error);
}

}  // namespace
}  // namespace stelvan::jet
