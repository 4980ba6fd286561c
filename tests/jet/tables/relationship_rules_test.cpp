// Enforced relationships: made, kept, cascaded, and judged when the outermost unit of work commits.
#include <gtest/gtest.h>

#include "jet/check/check.h"
#include "jet/database.h"
#include "tests/jet/row_text.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::ColumnType;
using jet::ColumnValue;
using jet::Database;
using jet::ErrorKind;
using jet::RowId;
using jet::TableSpec;
using jet::UnitOfWork;
using Values = std::vector<ColumnValue>;

class Related : public testing::Test {
protected:
    ScratchDir scratch_;
    Database database_ = Database::create(scratch_.path() / "new.mdb", jet::DateTime{45000});

    void SetUp() override {
        createTable("Parent", "id", true);
        createTable("Child", "parent", false);
    }

    void TearDown() override {
        for (const jet::Finding& finding : jet::check(database_.path(), {true}))
            ADD_FAILURE() << finding.text;
    }

    void createTable(const std::string& name, const std::string& first, bool primary) {
        TableSpec spec;
        spec.name = name;
        spec.columns.resize(2);
        spec.columns[0].name = first;
        spec.columns[0].type = ColumnType::Long;
        spec.columns[1].name = "text";
        spec.columns[1].length = 40;
        if (primary) {
            jet::IndexInfo key;
            key.name = "PrimaryKey";
            key.columns = {{0, true}};
            key.primary = true;
            spec.indexes = {key};
        }
        database_.createTable(spec);
    }

    void relate(bool cascadeUpdates = false, bool cascadeDeletes = false) {
        jet::RelationshipInfo info;
        info.name = "ParentChild";
        info.parentTable = "Parent";
        info.parentColumns = {"id"};
        info.childTable = "Child";
        info.childColumns = {"parent"};
        info.enforced = true;
        info.cascadeUpdates = cascadeUpdates;
        info.cascadeDeletes = cascadeDeletes;
        database_.createRelationship(info);
    }

    RowId add(const std::string& table, std::optional<int> number) {
        Values values;
        if (number) values.emplace_back(0, *number);
        return database_.table(table).insert(values);
    }

    std::size_t count(const std::string& table) { return readRows(database_.table(table)).size(); }

    std::multiset<std::string> children() { return readRows(database_.table("Child")); }

    template <typename Act>
    static void expectRefusal(ErrorKind kind, const std::string& subject, Act&& act) {
        try {
            act();
            ADD_FAILURE() << "was not refused";
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.kind(), kind) << error.what();
            EXPECT_EQ(error.subject(), subject);
        }
    }
};

TEST_F(Related, AreDescribedAndHaveAnIndexOnBothSides) {
    relate(true, false);
    const auto found = database_.relationships();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0].enforced && found[0].cascadeUpdates && !found[0].cascadeDeletes);
    EXPECT_EQ(found[0].childColumns, std::vector<std::string>{"parent"});
    const auto foreign = [&](const std::string& table) {
        std::vector<std::string> names;
        for (const auto& index : database_.table(table).info().indexes) {
            if (index.foreign) names.push_back(index.name);
        }
        return names;
    };
    EXPECT_EQ(foreign("Child"), std::vector<std::string>{"ParentChild"});
    EXPECT_EQ(foreign("Parent"), std::vector<std::string>{".rB"});
}

TEST_F(Related, NeedAParentForEveryChildThatNamesOne) {
    relate();
    add("Parent", 1);
    add("Child", 1);
    add("Child", std::nullopt);
    expectRefusal(ErrorKind::MissingParent, "Parent", [&] { add("Child", 2); });
    EXPECT_EQ(count("Child"), 2U);
    const RowId child = add("Child", 1);
    expectRefusal(ErrorKind::MissingParent, "Parent", [&] {
        database_.table("Child").update(child, Values{{0, 9}});
    });
    database_.table("Child").update(child, Values{{0, jet::Null{}}});
}

TEST_F(Related, AllowTheChildBeforeItsParentWithinAUnit) {
    relate();
    UnitOfWork unit(database_);
    add("Child", 5);
    add("Parent", 5);
    unit.commit();
    EXPECT_EQ(count("Child"), 1U);
}

TEST_F(Related, UndoTheWholeUnitWhenTheJudgementFails) {
    relate();
    expectRefusal(ErrorKind::MissingParent, "Parent", [&] {
        UnitOfWork unit(database_);
        add("Parent", 1);
        add("Child", 2);
        unit.commit();
    });
    EXPECT_EQ(count("Parent"), 0U);
    EXPECT_EQ(count("Child"), 0U);
    add("Parent", 1);
}

TEST_F(Related, KeepAParentThatHasChildren) {
    relate();
    const RowId parent = add("Parent", 1);
    const RowId child = add("Child", 1);
    expectRefusal(ErrorKind::HasChildren, "Child",
                  [&] { database_.table("Parent").erase(parent); });
    expectRefusal(ErrorKind::HasChildren, "Child", [&] {
        database_.table("Parent").update(parent, Values{{0, 2}});
    });
    database_.table("Parent").update(parent, Values{{1, std::string("other column")}});
    database_.table("Child").erase(child);
    database_.table("Parent").erase(parent);
    EXPECT_EQ(count("Parent"), 0U);
}

TEST_F(Related, LetAParentGoAndComeBackWithinAUnit) {
    relate();
    const RowId parent = add("Parent", 1);
    add("Child", 1);
    UnitOfWork unit(database_);
    database_.table("Parent").erase(parent);
    add("Parent", 1);
    unit.commit();
    EXPECT_EQ(count("Child"), 1U);
}

TEST_F(Related, CascadeDeletes) {
    relate(false, true);
    const RowId parent = add("Parent", 1);
    add("Parent", 2);
    add("Child", 1);
    add("Child", 1);
    add("Child", 2);
    database_.table("Parent").erase(parent);
    EXPECT_EQ(children(), (std::multiset<std::string>{"parent=2|text=null|"}));
}

TEST_F(Related, CascadeUpdates) {
    relate(true, false);
    const RowId parent = add("Parent", 1);
    add("Child", 1);
    add("Child", 1);
    database_.table("Parent").update(parent, Values{{0, 7}});
    EXPECT_EQ(children(),
              (std::multiset<std::string>{"parent=7|text=null|", "parent=7|text=null|"}));
    expectRefusal(ErrorKind::HasChildren, "Child",
                  [&] { database_.table("Parent").erase(parent); });
}

TEST_F(Related, AreRefusedWhereTheRowsAlreadyBreakThem) {
    add("Child", 3);
    expectRefusal(ErrorKind::MissingParent, "Parent", [&] { relate(); });
    EXPECT_TRUE(database_.relationships().empty());
}

TEST_F(Related, TakeOverTheRowsThatAreThere) {
    add("Parent", 1);
    add("Child", 1);
    add("Child", std::nullopt);
    relate();
    const auto cursor = database_.table("Child").inOrder(0, {0});
    std::size_t rows = 0;
    while (cursor->next()) ++rows;
    EXPECT_EQ(rows, 2U);
}

TEST_F(Related, StayWithTheirTables) {
    relate();
    expectRefusal(ErrorKind::HasChildren, "Child", [&] { database_.dropTable("Parent"); });
    expectRefusal(ErrorKind::HasChildren, "Parent", [&] { database_.dropTable("Child"); });
}

class StoredRelationships : public testing::TestWithParam<ModelFile> {};

TEST_P(StoredRelationships, CascadeAsTheySay) {
    STELVAN_NEEDS_FILE(GetParam());
    ScratchDir scratch;
    Database database = Database::open(scratch.copyOf(GetParam().path()));
    jet::Table& parent = database.table("Table2");
    const std::size_t child = *database.table("Table1").info().findColumn("otherfk1");
    const std::size_t id = *parent.info().findColumn("id");
    const auto rowsBefore = database.table("Table1").info().rows;
    std::size_t referring = 0;
    const auto first = parent.scan({id});
    ASSERT_TRUE(first->next());
    const jet::Value key = jet::toValue(first->value(id));
    const RowId row = first->rowId();
    const auto children = database.table("Table1").scan({child});
    while (children->next()) referring += jet::toValue(children->value(child)) == key ? 1 : 0;
    parent.erase(row);
    EXPECT_EQ(database.table("Table1").info().rows, rowsBefore - referring);
    EXPECT_FALSE(jet::anyFault(jet::check(database.path())));
}

INSTANTIATE_TEST_SUITE_P(Models, StoredRelationships,
                         testing::ValuesIn(byEveryMaker({"shapes/relationships.mdb"})),
                         [](const auto& file) { return label(file.param); });

}  // namespace
}  // namespace stelvan::test
