// Enforced relationships are judged when a unit of work commits; a refusal brings record sets back,
// too.
#include <gtest/gtest.h>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;
using Texts = std::vector<std::string>;
constexpr const char* kFile = "shapes/relationships.mdb";
constexpr std::int32_t kFailed = -2147467259;

void fillChild(Recordset& children, const char* parent) {
    children.addNew();
    children.setField("id", Value(std::string("50")));
    children.setField("otherfk1", Value(std::string(parent)));
    children.setField("otherfk2", Value(std::string("10")));
    children.setField("otherfk3", Value(std::string("0")));
}

TEST(Relationships, AChildWithoutItsParentIsRefusedAndStaysPending) {
    STELVAN_GEM_FILE(kFile);
    const auto children = file.records("select * from Table1");
    fillChild(*children, "77");
    const base::RunTimeError alone = failureOf([&] { children->update(); });
    EXPECT_EQ(alone.number(), kFailed);
    EXPECT_STREQ(alone.what(),
                 "You cannot add or change a record because a related record is required in table "
                 "'Table2'.");
    EXPECT_TRUE(children->editPending());
    const base::RunTimeError atCommit = failureOf([&] {
        UnitOfWork unit(file.path());
        children->update();
        unit.commit();
    });
    EXPECT_EQ(atCommit.number(), kFailed);
    EXPECT_TRUE(children->editPending());
    EXPECT_EQ(file.records("select * from Table1")->recordCount(), 4);
}

TEST(Relationships, TheParentMayFollowWithinTheUnit) {
    STELVAN_GEM_FILE(kFile);
    const auto children = file.records("select * from Table1");
    fillChild(*children, "77");
    {
        UnitOfWork unit(file.path());
        children->update();
        file.execute("INSERT INTO Table2 (id, data) VALUES (77, 'late')");
        unit.commit();
    }
    EXPECT_FALSE(children->editPending());
    EXPECT_EQ(
        file.column("SELECT b.data FROM Table1 a, Table2 b WHERE a.otherfk1 = b.id AND a.id = 50"),
        Texts{"late"});
}

TEST(Relationships, AParentWithChildrenIsKeptUnlessDeletesCascade) {
    STELVAN_GEM_FILE(kFile);
    const base::RunTimeError error =
        failureOf([&] { file.execute("DELETE FROM Table3 WHERE id = 10"); });
    EXPECT_EQ(error.number(), kFailed);
    EXPECT_STREQ(
        error.what(),
        "The record cannot be deleted or changed because table 'Table1' includes related records.");
    file.execute("DELETE FROM Table2 WHERE id = 1");
    EXPECT_EQ(file.column("SELECT id FROM Table1"), (Texts{"0", "3"}));
}

}  // namespace
}  // namespace stelvan::db
