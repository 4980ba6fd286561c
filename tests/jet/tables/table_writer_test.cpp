// What a table takes, what it refuses, and what a refusal leaves behind.
#include "jet/tables/table_writer.h"

#include <gtest/gtest.h>

#include "jet/tables/definition_format.h"
#include "tests/jet/tables/written_table.h"

namespace stelvan::test {
namespace {

TEST_F(WrittenTable, RefusesValuesThatAColumnCannotHold) {
    expectRefusal(ErrorKind::NullInRequired, "T.name", [&] { table().insert(Values{}); });
    expectRefusal(ErrorKind::ZeroLength, "T.name", [&] { add(""); });
    expectRefusal(ErrorKind::TextTooLong, "short", [&] {
        add("a", {{kShort, std::string("12345678901")}});
    });
    expectRefusal(ErrorKind::NumericOverflow, "count", [&] { add("a", {{kCount, 40000}}); });
    expectRefusal(ErrorKind::TypeMismatch, "count", [&] {
        add("a", {{kCount, std::string("many")}});
    });
    expectRefusal(ErrorKind::TypeMismatch, "count", [&] { add("a", {{kCount, 1.5}}); });
    expectRefusal(ErrorKind::NumericOverflow, "number", [&] { add("a", {{kNumber, 256}}); });
    expectRefusal(ErrorKind::NoSuchColumn, "T", [&] { add("a", {{99, 1}}); });
    expectRefusal(ErrorKind::TypeMismatch, "short", [&] {
        add("a", {{kShort, std::string("\xEF\xBB\xBFx")}});
    });
    EXPECT_EQ(table().info().rows, 0U);
}

TEST_F(WrittenTable, RefusesASecondRowWithAUniqueKey) {
    const RowId first = add("a", {{kShort, std::string("Key")}});
    expectRefusal(ErrorKind::DuplicateKey, "T", [&] {
        add("b", {{kShort, std::string("KEY  ")}});
    });
    expectRefusal(ErrorKind::DuplicateKey, "T", [&] { add("b", {{kId, 1}}); });
    const RowId second = add("b", {{kShort, std::string("other")}});
    expectRefusal(ErrorKind::DuplicateKey, "T", [&] {
        table().update(second, Values{{kShort, std::string("key")}});
    });
    table().update(first, Values{{kShort, std::string("key")}});
    EXPECT_EQ(value(first, kShort), Value(std::string("key"))) << "its own key is no other's";
}

TEST_F(WrittenTable, TakesManyNullsInAUniqueIndexButNoneInThePrimaryKey) {
    add("a");
    const RowId second = add("b", {{kShort, jet::Null{}}});
    expectRefusal(ErrorKind::NullInKey, "T", [&] {
        table().update(second, Values{{kId, jet::Null{}}});
    });
    EXPECT_EQ(table().info().rows, 2U);
}

TEST_F(WrittenTable, SaysThatARowIsGone) {
    const RowId row = add("a");
    table().erase(row);
    expectRefusal(ErrorKind::RowGone, "T", [&] { table().erase(row); });
    expectRefusal(ErrorKind::RowGone, "T", [&] {
        table().update(row, Values{{kName, std::string("b")}});
    });
    expectRefusal(ErrorKind::RowGone, "T", [&] { table().erase({999999, 0}); });
    EXPECT_EQ(table().row(row, {}), nullptr);
}

TEST_F(WrittenTable, NumbersItsRows) {
    EXPECT_EQ(value(add("a"), kId), Value(1));
    EXPECT_EQ(value(add("b"), kId), Value(2));
    EXPECT_EQ(value(add("c", {{kId, 50}}), kId), Value(50));
    table().erase(add("d"));
    EXPECT_EQ(value(add("e"), kId), Value(52)) << "numbers are not given out twice";
    add("last", {{kId, 2147483647}});
    expectRefusal(ErrorKind::NumericOverflow, "id", [&] { add("none left"); });
}

TEST_F(WrittenTable, KeepsTheIdOfARowThatGrowsAndShrinks) {
    std::vector<RowId> rows;
    for (int i = 0; i < 40; ++i)
        rows.push_back(add("row " + std::to_string(i), {{kMemo, std::string("m")}}));
    const std::string large(255, 'L');
    for (const RowId row : rows) table().update(row, Values{{kName, large}});
    for (const RowId row : rows) EXPECT_EQ(value(row, kName), Value(large));
    EXPECT_EQ(readRows(table()).size(), rows.size());
    for (const RowId row : rows) table().update(row, Values{{kName, std::string("s")}});
    for (const RowId row : rows) EXPECT_EQ(value(row, kName), Value(std::string("s")));
    for (const RowId row : rows) table().erase(row);
    EXPECT_TRUE(readRows(table()).empty());
}

TEST_F(WrittenTable, RefusesARowThatIsTooLarge) {
    jet::TableSpec wide;
    wide.name = "Wide";
    for (int i = 0; i < 10; ++i) {
        jet::ColumnInfo column;
        column.name = "t" + std::to_string(i);
        column.length = 510;
        wide.columns.push_back(column);
    }
    database_.createTable(wide);
    Values values;
    for (std::size_t i = 0; i < 8; ++i) values.emplace_back(i, std::string(250, 'x'));
    const RowId row = database_.table("Wide").insert(values);
    expectRefusal(ErrorKind::RowTooLarge, "Wide", [&] {
        database_.table("Wide").update(row, Values{{9, std::string(20, 'x')}});
    });
    EXPECT_EQ(readRows(database_.table("Wide")).size(), 1U);
}

TEST_F(WrittenTable, RefusesKeysOfAnOrderThatItDoesNotKnow) {
    jet::TableSpec spec;
    spec.name = "Swedish";
    spec.columns.resize(3);
    spec.columns[0].name = "id";
    spec.columns[0].type = ColumnType::Long;
    spec.columns[1].name = "name";
    spec.columns[1].length = 100;
    spec.columns[2].name = "other";
    spec.columns[2].length = 100;
    spec.indexes.resize(1);
    spec.indexes[0].name = "name";
    spec.indexes[0].columns = {{1, true}};
    database_.createTable(spec);
    const RowId row = database_.table("Swedish").insert(Values{{0, 1}, {1, std::string("x")}});
    {
        // The order stands in the column's block; no procedure changes it.
        auto& file = *database_.impl().file;
        jet::WriteScope scope(file.sharedPages());
        const jet::PageNumber page = file.catalog().findTable("Swedish")->definitionPage();
        const std::size_t block =
            jet::definition::kStatistics + jet::statistics::kSize + jet::column_block::kSize;
        jet::putU16(file.pages().edit(page), block + jet::column_block::kLocale, 0x041D);
        scope.commit();
        file.catalog().forget();
    }
    jet::Table& swedish = database_.table("Swedish");
    EXPECT_EQ(readRows(swedish).size(), 1U);
    const auto refused = [&](auto&& act) {
        expectRefusal(ErrorKind::UnsupportedOrder, "Swedish", act);
    };
    refused([&] { swedish.insert(Values{{0, 2}}); });
    refused([&] { swedish.erase(row); });
    refused([&] { swedish.update(row, Values{{1, std::string("y")}}); });
    swedish.update(row, Values{{2, std::string("no key")}});
    EXPECT_THROW(
        static_cast<void>(swedish.find(0, std::vector<Value>{Value(std::string("x"))}, {})),
        jet::Error);
    database_.dropTable("Swedish");
}

}  // namespace
}  // namespace stelvan::test
