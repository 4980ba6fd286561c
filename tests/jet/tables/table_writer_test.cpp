// What a table takes, what it refuses, and what a refusal leaves behind.
#include <gtest/gtest.h>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/database_impl.h"
#include "jet/pages/data_page.h"
#include "jet/pages/long_value.h"
#include "jet/rows/row_codec.h"
#include "jet/tables/table_scan.h"
#include "tests/jet/row_text.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::ColumnType;
using jet::Database;
using jet::ErrorKind;
using jet::RowId;
using jet::UnitOfWork;
using jet::Value;
using Values = std::vector<jet::ColumnValue>;

enum Column : std::size_t {
    kId,
    kName,
    kShort,
    kMemo,
    kPlainMemo,
    kPicture,
    kCount,
    kFlag,
    kNumber
};

class WrittenTable : public testing::Test {
protected:
    ScratchDir scratch_;
    std::filesystem::path path_ = scratch_.path() / "new.mdb";
    Database database_ = Database::create(path_, jet::DateTime{45000});

    void SetUp() override {
        jet::TableSpec spec{"T", std::vector<jet::ColumnInfo>(9), std::vector<jet::IndexInfo>(3)};
        const char* names[] = {"id",      "name",  "short", "memo",  "plainMemo",
                               "picture", "count", "flag",  "number"};
        const ColumnType types[] = {ColumnType::Long,    ColumnType::Text,    ColumnType::Text,
                                    ColumnType::Memo,    ColumnType::Memo,    ColumnType::Ole,
                                    ColumnType::Integer, ColumnType::Boolean, ColumnType::Byte};
        for (std::size_t i = 0; i < spec.columns.size(); ++i) {
            spec.columns[i].name = names[i];
            spec.columns[i].type = types[i];
            spec.columns[i].compressed = i == kName || i == kMemo;
        }
        spec.columns[kId].autoNumber = true;
        spec.columns[kName].length = 510;
        spec.columns[kName].required = true;
        spec.columns[kName].allowZeroLength = false;
        spec.columns[kShort].length = 20;
        spec.indexes[0].name = "PrimaryKey";
        spec.indexes[0].columns = {{kId, true}};
        spec.indexes[0].primary = true;
        spec.indexes[1].name = "name";
        spec.indexes[1].columns = {{kName, true}};
        spec.indexes[2].name = "short";
        spec.indexes[2].columns = {{kShort, true}};
        spec.indexes[2].unique = true;
        database_.createTable(spec);
    }

    void TearDown() override {
        for (const jet::Finding& finding : jet::check(path_, {true})) ADD_FAILURE() << finding.text;
    }

    jet::Table& table() { return database_.table("T"); }

    RowId add(const std::string& name, Values more = {}) {
        more.emplace_back(kName, name);
        return table().insert(more);
    }

    Value value(RowId id, std::size_t column) {
        const auto row = table().row(id, {column});
        return row == nullptr ? Value(std::string("gone")) : jet::toValue(row->value(column));
    }

    template <typename Act>
    static void expectRefusal(ErrorKind kind, const std::string& subject, Act&& act) {
        try {
            act();
            ADD_FAILURE() << "was not refused";
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.kind(), kind) << error.what();
            EXPECT_EQ(error.subject(), subject) << error.what();
        }
    }

    /// The stored bytes of a column: for a long value its reference.
    std::vector<std::uint8_t> stored(RowId id, std::size_t column) {
        const auto scope = database_.beginRead();
        auto& file = *database_.impl().file;
        const auto definition = file.catalog().definition(*file.catalog().findTable("T"));
        const auto row = jet::locateRow(file.pages(), *definition, id);
        const auto bytes = jet::RowView(*definition, row->bytes, id.page).stored(column);
        return {bytes->begin(), bytes->end()};
    }
};

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

TEST_F(WrittenTable, GoesOnAfterARefusalWithinAUnit) {
    UnitOfWork unit(database_);
    add("a", {{kShort, std::string("k")}});
    expectRefusal(ErrorKind::DuplicateKey, "T", [&] {
        add("b", {{kShort, std::string("k")}, {kMemo, std::string(9000, 'x')}});
    });
    expectRefusal(ErrorKind::TypeMismatch, "count", [&] {
        add("b", {{kCount, std::string("?")}});
    });
    add("c");
    unit.commit();
    EXPECT_EQ(table().info().rows, 2U);
}

TEST_F(WrittenTable, IsAsBeforeWhenAUnitEndsWithoutCommit) {
    const RowId kept = add("kept", {{kMemo, std::string(5000, 'm')}});
    {
        UnitOfWork unit(database_);
        add("never");
        table().update(kept,
                       Values{{kName, std::string("changed")}, {kMemo, std::string("short")}});
        EXPECT_EQ(value(kept, kName), Value(std::string("changed")));
    }
    EXPECT_EQ(value(kept, kName), Value(std::string("kept")));
    EXPECT_EQ(value(kept, kMemo), Value(std::string(5000, 'm')));
    EXPECT_EQ(table().info().rows, 1U);
}

TEST_F(WrittenTable, IsSharedByAllHandlesWithinAUnit) {
    Database other = Database::open(path_);
    UnitOfWork unit(database_);
    const RowId mine = add("mine");
    other.table("T").insert(Values{{kName, std::string("theirs")}});
    EXPECT_NE(other.table("T").row(mine, {}), nullptr);
    unit.commit();
    EXPECT_EQ(readRows(other.table("T")).size(), 2U);
}

TEST_F(WrittenTable, RefusesAHandleForReadingOnly) {
    Database reader = Database::open(path_, jet::Access::ReadOnly);
    expectRefusal(ErrorKind::ReadOnly, path_.string(), [&] {
        reader.table("T").insert(Values{{kName, std::string("x")}});
    });
    expectRefusal(ErrorKind::ReadOnly, path_.string(), [&] { UnitOfWork unit(reader); });
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
