// Where memos and pictures go, and what becomes of their pages.
#include "jet/rows/long_value_store.h"

#include <gtest/gtest.h>

#include "jet/pages/data_page.h"
#include "jet/pages/long_value.h"
#include "tests/jet/tables/written_table.h"

namespace stelvan::test {
namespace {

TEST_F(WrittenTable, MovesShortMemosOutOfARowThatWouldBeTooLarge) {
    jet::TableSpec spec;
    spec.name = "Memos";
    for (int i = 0; i < 80; ++i) {
        jet::ColumnInfo column;
        column.name = "m" + std::to_string(i);
        column.type = ColumnType::Memo;
        spec.columns.push_back(column);
    }
    database_.createTable(spec);
    Values values;
    for (std::size_t i = 0; i < 80; ++i)
        values.emplace_back(i, std::string("\xE6\x97\xA5") + std::string(31, 'x'));
    const RowId row = database_.table("Memos").insert(values);
    const auto cursor = database_.table("Memos").row(row, {0, 79});
    EXPECT_EQ(jet::toValue(cursor->value(0)), values[0].second);
    EXPECT_EQ(jet::toValue(cursor->value(79)), values[79].second);
}

struct Border {
    std::size_t column;
    std::size_t length;  // characters or bytes
    std::uint32_t kind;
    bool compressed;
};

TEST_F(WrittenTable, StoresLongValuesAsTheEngineDoes) {
    using namespace jet::long_value;
    const Border borders[] = {{kMemo, 0, kInline, false},       {kMemo, 2, kInline, false},
                              {kMemo, 3, kInline, true},        {kMemo, 32, kInline, true},
                              {kMemo, 33, kSingle, true},       {kMemo, 1024, kSingle, true},
                              {kMemo, 1025, kSingle, false},    {kMemo, 2038, kSingle, false},
                              {kMemo, 2039, kChain, false},     {kPlainMemo, 32, kInline, true},
                              {kPlainMemo, 33, kSingle, false}, {kPicture, 64, kInline, false},
                              {kPicture, 65, kSingle, false},   {kPicture, 4076, kSingle, false},
                              {kPicture, 4077, kChain, false},  {kPicture, 50000, kChain, false}};
    for (const Border& border : borders) {
        SCOPED_TRACE(std::to_string(border.column) + " " + std::to_string(border.length));
        const bool picture = border.column == kPicture;
        const Value given =
            picture ? Value(jet::Blob(border.length, 7)) : Value(std::string(border.length, 'm'));
        const RowId row = add("x", {{border.column, given}});
        EXPECT_EQ(value(row, border.column), given);
        const jet::LongValueReference reference = jet::readReference(stored(row, border.column));
        EXPECT_EQ(reference.kind, border.kind);
        const std::size_t plain = picture ? border.length : 2 * border.length;
        EXPECT_EQ(reference.length, border.compressed ? border.length + 2 : plain);
    }
}

TEST_F(WrittenTable, GivesTheRoomOfReplacedLongValuesBack) {
    const RowId row = add("x", {{kMemo, std::string(20000, 'a')}, {kPicture, jet::Blob(30000, 1)}});
    const auto size = std::filesystem::file_size(path_);
    for (int i = 0; i < 30; ++i) {
        table().update(row,
                       Values{{kMemo, std::string(20000, 'b')}, {kPicture, jet::Blob(30000, 2)}});
        table().update(row, Values{{kMemo, std::string("short")}, {kPicture, jet::Null{}}});
    }
    table().erase(row);
    EXPECT_LE(std::filesystem::file_size(path_), 2 * size);
}

TEST_F(WrittenTable, LongValuesInSteadyUseDoNotGrowTheFile) {
    std::vector<RowId> rows;
    for (int i = 0; i < 300; ++i)
        rows.push_back(add("row " + std::to_string(i), {{kMemo, std::string(70, 'm')}}));
    const auto size = std::filesystem::file_size(path_);
    UnitOfWork unit(database_);
    for (std::size_t i = 0; i < 20000; ++i) {
        const std::string text(40 + i * 7 % 60, 'n');
        table().update(rows[i * 7919 % rows.size()], Values{{kMemo, text}});
    }
    unit.commit();
    EXPECT_LE(std::filesystem::file_size(path_), size + size / 4);
}

}  // namespace
}  // namespace stelvan::test
