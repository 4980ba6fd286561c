// Units of work over a table: refusals within, ends without commit, several handles.
#include "jet/tables/unit_of_work.h"

#include <gtest/gtest.h>

#include "tests/jet/tables/written_table.h"

namespace stelvan::test {
namespace {

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

}  // namespace
}  // namespace stelvan::test
