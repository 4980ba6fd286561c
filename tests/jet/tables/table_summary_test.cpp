// What a table says of all its rows: an index is believed only as far as it agrees with them.
#include "jet/tables/table_summary.h"

#include <optional>
#include <string>

#include "jet/index/index_keys.h"
#include "jet/tables/definition_format.h"
#include "tests/jet/tables/written_table.h"

namespace stelvan::test {
namespace {

using jet::Extreme;

class Summary : public WrittenTable {
protected:
    static constexpr std::size_t kByName = 1;
    static constexpr std::size_t kByShort = 2;

    std::string extreme(std::size_t index, Extreme which) {
        const std::optional<Value> value = table().extreme(index, which);
        return value ? textOf(*value) : "not told";
    }
    static std::string textOf(const Value& value) {
        if (const auto* text = std::get_if<std::string>(&value)) return *text;
        if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
        return "another type";
    }

    /// Bends pages in a unit of work of its own.
    template <typename Bend>
    void bend(Bend&& apply) {
        UnitOfWork unit(database_);
        auto& file = *database_.impl().file;
        apply(file, *file.catalog().definition(*file.catalog().findTable("T")));
        unit.commit();
    }
    void setRowCount(std::uint32_t rows) {
        bend([&](jet::SharedDatabase& file, const jet::TableDef& definition) {
            jet::putU32(file.pages().edit(definition.page), jet::definition::kRows, rows);
        });
    }
    /// The row stands under another number in the primary index.
    void moveEntry(RowId row, std::int32_t from, std::int32_t to) {
        bend([&](jet::SharedDatabase& file, const jet::TableDef& definition) {
            const jet::RealIndexDef& primary = definition.trees[definition.info.indexes[0].tree];
            const jet::KeyEncoder encoder(definition.info.columns, primary.columns);
            jet::OwnedPages pages(file.pages(), primary.map);
            jet::IndexTree tree(file.pages(), primary.root, definition.page, &pages);
            jet::IndexKey key;
            encoder.encode(std::array{jet::ValueView(from)}, key);
            tree.remove(key.bytes, row);
            encoder.encode(std::array{jet::ValueView(to)}, key);
            tree.insert(key.bytes, row);
        });
    }
};

TEST_F(Summary, CountsRowsThatComeAndGo) {
    EXPECT_EQ(table().count(), 0u);
    std::vector<RowId> rows;
    for (int i = 0; i < 700; ++i) rows.push_back(add("row " + std::to_string(i)));
    EXPECT_EQ(table().count(), 700u);
    for (std::size_t i = 0; i < rows.size(); i += 2) table().erase(rows[i]);
    EXPECT_EQ(table().count(), 350u);
}

TEST_F(Summary, CountsTheRowsThemselvesWhereTheDefinitionSaysOtherwise) {
    for (int i = 0; i < 20; ++i) add("row " + std::to_string(i));
    setRowCount(25);
    EXPECT_EQ(table().count(), 20u);
    setRowCount(20);
}

TEST_F(Summary, ExtremesLeaveNullsAside) {
    EXPECT_EQ(extreme(0, Extreme::Greatest), "not told") << "there is none";
    add("beta");
    add("alpha", {{kShort, std::string("mm")}});
    add("Gamma", {{kShort, std::string("kk")}});
    EXPECT_EQ(extreme(0, Extreme::Least), "1");
    EXPECT_EQ(extreme(0, Extreme::Greatest), "3");
    EXPECT_EQ(extreme(kByName, Extreme::Least), "alpha");
    EXPECT_EQ(extreme(kByName, Extreme::Greatest), "Gamma");
    EXPECT_EQ(extreme(kByShort, Extreme::Least), "kk");
    EXPECT_EQ(extreme(kByShort, Extreme::Greatest), "mm");
}

TEST_F(Summary, OfTextsThatTheIndexHoldsForEqualTheFirstStoredCounts) {
    const RowId first = add("zz");
    add("ZZ");
    add("Zz");
    EXPECT_EQ(extreme(kByName, Extreme::Greatest), "zz");
    table().erase(first);
    EXPECT_EQ(extreme(kByName, Extreme::Greatest), "ZZ");
}

TEST_F(Summary, TextsWhoseKeyMayBeAnotherAreLeftToTheRows) {
    add("mid");
    add("z-z");
    EXPECT_EQ(extreme(kByName, Extreme::Greatest), "not told");
    EXPECT_EQ(extreme(kByName, Extreme::Least), "mid");
}

TEST_F(Summary, AnEntryThatItsRowDoesNotBearOutTellsNothing) {
    add("one");
    const RowId last = add("two");
    moveEntry(last, 2, 9);
    EXPECT_EQ(extreme(0, Extreme::Greatest), "not told");
    EXPECT_EQ(extreme(0, Extreme::Least), "1");
    moveEntry(last, 9, 2);
    EXPECT_EQ(extreme(0, Extreme::Greatest), "2");
}

}  // namespace
}  // namespace stelvan::test
