#include "jet/row_changes.h"

#include <gtest/gtest.h>

#include <array>

#include "jet/check/check.h"
#include "jet/database.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

class RowChangesTest : public ::testing::Test {
protected:
    test::ScratchDir folder;
    std::filesystem::path file = folder.copyOf(test::model("gem.mdb"));
    Database database = Database::open(file);
    Table& events = database.table("secs_cusevent");

    /// Everything that the tables hold, by row id.
    std::vector<std::vector<Value>> rowsOf(const std::string& table) {
        const ColumnSet all = allColumns(database.table(table).info());
        std::vector<std::vector<Value>> rows;
        for (const auto cursor = database.table(table).inOrder(0, all); cursor->next();)
            rows.push_back(valuesOf(*cursor, all));
        return rows;
    }
    template <class Body>
    RowChanges changesOf(const Body& body) {
        RowChangeRecorder recorder(database);
        UnitOfWork unit(database);
        body();
        unit.commit();
        return recorder.take();
    }
    void undo(const RowChanges& changes, const std::vector<RowChanges*>& earlier = {}) {
        UnitOfWork unit(database);
        takeBack(database, changes, earlier);
        unit.commit();
    }
    RowId firstEvent() {
        const auto rows = events.scan({});
        EXPECT_TRUE(rows->next());
        return rows->rowId();
    }
    ColumnValue name(const std::string& text) {
        return {events.info().findColumn("evt_name").value(), text};
    }
    ColumnValue id(std::int32_t number) {
        return {events.info().findColumn("evt_id").value(), number};
    }
    void expectSound() { EXPECT_FALSE(anyFault(check(file, {}))); }
};

TEST_F(RowChangesTest, InsertUpdateAndEraseAreTakenBackInOneUnit) {
    const auto before = rowsOf("secs_cusevent");
    const RowId first = firstEvent();
    const RowChanges changes = changesOf([&] {
        const RowId added = events.insert(std::array{id(90001), name("Added")});
        events.update(added, std::array{name("AddedAndChanged")});
        events.update(first, std::array{name("Changed")});
        events.erase(first);
    });
    EXPECT_EQ(changes.size(), 4U);
    EXPECT_NE(rowsOf("secs_cusevent"), before);
    undo(changes);
    EXPECT_EQ(rowsOf("secs_cusevent"), before);
    expectSound();
}

TEST_F(RowChangesTest, EarlierChangesFollowARowThatComesBackUnderAnotherId) {
    const auto before = rowsOf("secs_cusevent");
    const RowId first = firstEvent();
    RowChanges change = changesOf([&] { events.update(first, std::array{name("Changed")}); });
    const RowChanges erase = changesOf([&] { events.erase(first); });
    // Somebody else's row takes the place meanwhile.
    const RowChanges filler = changesOf([&] {
        events.insert(std::array{id(90002), name("Filler")});
    });
    undo(erase, {&change});
    undo(change);
    undo(filler);
    EXPECT_EQ(rowsOf("secs_cusevent"), before);
    expectSound();
}

TEST_F(RowChangesTest, ARowThatWasChangedSinceIsLeftAlone) {
    const RowId first = firstEvent();
    const RowChanges changes =
        changesOf([&] { events.update(first, std::array{name("Changed")}); });
    events.update(first, std::array{name("ChangedAgain")});
    const auto before = rowsOf("secs_cusevent");
    try {
        undo(changes);
        FAIL() << "the later change was overwritten";
    } catch (const Error& refused) {
        EXPECT_EQ(refused.kind(), ErrorKind::RowChanged);
    }
    EXPECT_EQ(rowsOf("secs_cusevent"), before);
}

TEST_F(RowChangesTest, ARowThatIsGoneIsNotBroughtBackByAnOlderChange) {
    const RowId first = firstEvent();
    const RowChanges changes =
        changesOf([&] { events.update(first, std::array{name("Changed")}); });
    events.erase(first);
    try {
        undo(changes);
        FAIL() << "nothing was there to be changed back";
    } catch (const Error& refused) {
        EXPECT_EQ(refused.kind(), ErrorKind::RowGone);
    }
}

TEST_F(RowChangesTest, NothingIsNotedOnceTheRecorderIsGone) {
    {
        RowChangeRecorder outer(database);
        {
            RowChangeRecorder inner(database);
            events.update(firstEvent(), std::array{name("A")});
            EXPECT_EQ(inner.take().size(), 1U);
        }
        EXPECT_TRUE(outer.take().empty());
        events.update(firstEvent(), std::array{name("B")});
        EXPECT_EQ(outer.take().size(), 1U);
    }
    events.update(firstEvent(), std::array{name("C")});
}

TEST(RowChanges, WhatRelationshipsMakeFollowIsTakenBackToo) {
    const test::ScratchDir folder;
    const auto file = folder.copyOf(test::model("shapes/relationships.mdb"));
    Database database = Database::open(file);
    const auto everything = [&] {
        std::vector<std::vector<Value>> rows;
        for (const std::string& name : database.tableNames()) {
            const ColumnSet all = allColumns(database.table(name).info());
            for (const auto cursor = database.table(name).inOrder(0, all); cursor->next();)
                rows.push_back(valuesOf(*cursor, all));
        }
        return rows;
    };
    const auto before = everything();
    bool cascaded = false;
    for (const RelationshipInfo& link : database.relationships()) {
        if (!link.cascadeDeletes) continue;
        Table& parent = database.table(link.parentTable);
        for (const auto rows = parent.scan({}); rows->next();) {
            const RowId row = rows->rowId();
            RowChangeRecorder recorder(database);
            try {
                UnitOfWork unit(database);
                parent.erase(row);
                unit.commit();
            } catch (const Error&) {
                continue;  // another relationship keeps the row
            }
            const RowChanges changes = recorder.take();
            cascaded = cascaded || changes.size() > 1;
            UnitOfWork unit(database);
            takeBack(database, changes);
            unit.commit();
            break;
        }
    }
    EXPECT_TRUE(cascaded);
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(anyFault(check(file, {})));
}

}  // namespace
}  // namespace stelvan::jet
