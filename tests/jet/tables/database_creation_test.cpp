// Databases, tables and relationships made from nothing.
#include "jet/tables/database_creation.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/disk/bytes.h"
#include "jet/pages/fixed_pages.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/row_text.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::ColumnType;
using jet::Database;
using jet::ErrorKind;
using jet::TableSpec;

constexpr jet::DateTime kCreated{45000.5};

class NewDatabase : public testing::Test {
protected:
    void TearDown() override {
        for (const jet::Finding& finding : jet::check(path_, {true})) ADD_FAILURE() << finding.text;
    }

    ScratchDir scratch_;
    std::filesystem::path path_ = scratch_.path() / "new.mdb";
    Database database_ = Database::create(path_, kCreated);

    static TableSpec spec(const std::string& name) {
        TableSpec table;
        table.name = name;
        table.columns.resize(3);
        table.columns[0].name = "id";
        table.columns[0].type = ColumnType::Long;
        table.columns[1].name = "name";
        table.columns[1].length = 100;
        table.columns[1].required = true;
        table.columns[1].allowZeroLength = false;
        table.columns[1].defaultValue = "\"none\"";
        table.columns[1].compressed = true;
        table.columns[2].name = "note";
        table.columns[2].type = ColumnType::Memo;
        jet::IndexInfo key;
        key.name = "PrimaryKey";
        key.columns = {{0, true}};
        key.primary = true;
        table.indexes = {key};
        return table;
    }

    template <typename Act>
    static ErrorKind refusal(Act&& act) {
        try {
            act();
        } catch (const jet::Error& error) {
            return error.kind();
        }
        ADD_FAILURE() << "was not refused";
        return ErrorKind::Misuse;
    }
};

TEST(EmptyDatabase, IsTheOneThatTheEngineMakes) {
    STELVAN_NEEDS_SAMPLE("access/no_user_tables.mdb");
    auto ours = jet::makeEmptyDatabase(kCreated);
    auto real = bytesOf(sample("access/no_user_tables.mdb"));
    ASSERT_EQ(ours.size(), real.size());
    // The dates of the catalogue's rows differ; so do a few fields of definitions that hold
    // leftovers.
    constexpr std::size_t kObjectRows = 14;
    for (std::size_t page = 0; page < ours.size() / jet::kPageSize; ++page) {
        const auto begin = static_cast<std::ptrdiff_t>(page * jet::kPageSize);
        const auto end = begin + static_cast<std::ptrdiff_t>(jet::kPageSize);
        const std::vector<std::uint8_t> a(ours.begin() + begin, ours.begin() + end);
        const std::vector<std::uint8_t> b(real.begin() + begin, real.begin() + end);
        std::size_t different = 0;
        for (std::size_t i = 0; i < a.size(); ++i) different += a[i] != b[i] ? 1 : 0;
        const bool definition = page == jet::kObjectsPage || page == jet::kAccessEntriesPage ||
                                page == jet::kQueriesPage;
        const std::size_t allowed = page == kObjectRows ? 8 * 2 * 8 : definition ? 12 : 0;
        EXPECT_LE(different, allowed) << "page " << page;
    }
}

TEST(EmptyDatabase, IsTheSameForTheSameDate) {
    EXPECT_EQ(jet::makeEmptyDatabase(kCreated), jet::makeEmptyDatabase(kCreated));
    EXPECT_NE(jet::makeEmptyDatabase(kCreated), jet::makeEmptyDatabase(jet::DateTime{45001}));
}

TEST_F(NewDatabase, HasSystemTablesOnly) {
    EXPECT_TRUE(database_.tableNames().empty());
    EXPECT_EQ(
        database_.tableNames(true),
        (std::vector<std::string>{"MSysACEs", "MSysObjects", "MSysQueries", "MSysRelationships"}));
    EXPECT_EQ(database_.table("MSysObjects").info().rows, 8U);
    EXPECT_EQ(database_.table("MSysACEs").info().rows, 16U);
}

TEST_F(NewDatabase, IsNotMadeOverAnother) {
    EXPECT_THROW(static_cast<void>(Database::create(path_, kCreated)), jet::Error);
}

TEST_F(NewDatabase, TakesATableWithItsPropertiesAndIndexes) {
    database_.createTable(spec("First"));
    Database again = Database::open(path_, jet::Access::ReadOnly);
    const jet::TableInfo& info = again.table("first").info();
    EXPECT_EQ(info.name, "First");
    ASSERT_EQ(info.columns.size(), 3U);
    EXPECT_TRUE(info.columns[1].required);
    EXPECT_FALSE(info.columns[1].allowZeroLength);
    EXPECT_EQ(info.columns[1].defaultValue, "\"none\"");
    EXPECT_TRUE(info.columns[2].allowZeroLength);
    ASSERT_EQ(info.indexes.size(), 1U);
    EXPECT_TRUE(info.indexes[0].primary && info.indexes[0].unique && info.indexes[0].required);
    EXPECT_FALSE(info.system);
}

TEST_F(NewDatabase, GivesEachTableItsAccessEntries) {
    const auto before = database_.table("MSysACEs").info().rows;
    database_.createTable(spec("First"));
    EXPECT_EQ(database_.table("MSysACEs").info().rows, before + 2);
    database_.dropTable("First");
    EXPECT_EQ(database_.table("MSysACEs").info().rows, before);
    EXPECT_EQ(database_.table("MSysObjects").info().rows, 8U);
}

TEST_F(NewDatabase, IsTheSameFileForTheSameSteps) {
    const auto other = scratch_.path() / "other.mdb";
    {
        Database second = Database::create(other, kCreated);
        for (Database* each : {&database_, &second}) {
            each->createTable(spec("First"));
            each->table("First").insert(
                std::vector<jet::ColumnValue>{{0, 1}, {1, std::string("one")}});
        }
    }
    EXPECT_EQ(bytesOf(path_), bytesOf(other));
}

TEST_F(NewDatabase, RefusesTablesThatCannotBe) {
    database_.createTable(spec("First"));
    EXPECT_EQ(refusal([&] { database_.createTable(spec("FIRST")); }), ErrorKind::TableExists);
    for (const char* name : {"", " x", "a.b", "a!b", "a[b", "a`b", "a\tb"}) {
        EXPECT_EQ(refusal([&] { database_.createTable(spec(name)); }), ErrorKind::InvalidName)
            << name;
    }
    EXPECT_EQ(refusal([&] { database_.createTable(spec(std::string(65, 'x'))); }),
              ErrorKind::InvalidName);
    TableSpec twice = spec("Twice");
    twice.columns[2].name = "ID";
    EXPECT_EQ(refusal([&] { database_.createTable(twice); }), ErrorKind::InvalidName);
    TableSpec noColumn = spec("NoColumn");
    noColumn.indexes[0].columns = {{7, true}};
    EXPECT_EQ(refusal([&] { database_.createTable(noColumn); }), ErrorKind::NoSuchColumn);
    TableSpec foreignOrder = spec("ForeignOrder");
    foreignOrder.columns[1].order = {0x041D, 0};
    foreignOrder.indexes[0].columns = {{1, true}};
    EXPECT_EQ(refusal([&] { database_.createTable(foreignOrder); }), ErrorKind::UnsupportedOrder);
    EXPECT_EQ(database_.tableNames(), std::vector<std::string>{"First"});
}

TEST_F(NewDatabase, HasRoomForManyTablesAndForLongDefinitions) {
    TableSpec large = spec("Large");
    for (int i = 0; i < 200; ++i) {
        jet::ColumnInfo column;
        column.name = "column with a long name, number " + std::to_string(i);
        column.type = i % 3 == 0   ? ColumnType::Memo
                      : i % 3 == 1 ? ColumnType::Long
                                   : ColumnType::Text;
        large.columns.push_back(column);
    }
    database_.createTable(large);
    for (int i = 0; i < 30; ++i) database_.createTable(spec("T" + std::to_string(i)));
    database_.table("Large").insert(std::vector<jet::ColumnValue>{
        {0, 1}, {1, std::string("x")}, {4, 5}, {3, std::string(3000, 'm')}});
    EXPECT_EQ(database_.tableNames().size(), 31U);
    Database again = Database::open(path_);
    EXPECT_EQ(again.table("Large").info().columns.size(), 203U);
    EXPECT_EQ(readRows(again.table("Large")).size(), 1U);
}

TEST_F(NewDatabase, UsesTheRoomOfADroppedTableAgain) {
    const auto fill = [&] {
        database_.createTable(spec("Filled"));
        jet::UnitOfWork unit(database_);
        for (int i = 0; i < 400; ++i) {
            database_.table("Filled").insert(std::vector<jet::ColumnValue>{
                {0, i},
                {1, std::string("row")},
                {2, std::string(static_cast<std::size_t>(i) * 20, 'x')}});
        }
        unit.commit();
    };
    fill();
    const auto size = std::filesystem::file_size(path_);
    database_.dropTable("Filled");
    EXPECT_FALSE(database_.hasTable("Filled"));
    EXPECT_EQ(refusal([&] { static_cast<void>(database_.table("Filled")); }),
              ErrorKind::NoSuchTable);
    fill();
    EXPECT_EQ(std::filesystem::file_size(path_), size);
    EXPECT_EQ(readRows(database_.table("Filled")).size(), 400U);
}

TEST_F(NewDatabase, ForgetsATableWhoseUnitIsRolledBack) {
    {
        jet::UnitOfWork unit(database_);
        database_.createTable(spec("Never"));
        EXPECT_TRUE(database_.hasTable("Never"));
    }
    EXPECT_FALSE(database_.hasTable("Never"));
    database_.createTable(spec("Never"));
    EXPECT_TRUE(database_.hasTable("Never"));
}

TEST_F(NewDatabase, RefusesToDropWhatStays) {
    EXPECT_EQ(refusal([&] { database_.dropTable("MSysObjects"); }), ErrorKind::Misuse);
    EXPECT_EQ(refusal([&] { database_.dropTable("Nothing"); }), ErrorKind::NoSuchTable);
}

}  // namespace
}  // namespace stelvan::test
