// Every index of every model file: its entries must be exactly those that its table's rows give.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/catalog.h"
#include "jet/tables/table_scan.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/index/text_weights.h"
#include "tests/jet/memory_pages.h"
#include "tests/support/model_names.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using jet::RowId;

struct Entry {
    std::vector<std::uint8_t> key;
    RowId row;
    friend auto operator<=>(const Entry&, const Entry&) = default;
};

std::ostream& operator<<(std::ostream& out, const Entry& entry) {
    return out << toHex(entry.key) << " -> " << entry.row.page << '/' << int{entry.row.slot};
}

class RealIndexEntries : public testing::TestWithParam<ModelFile> {
protected:
    void SetUp() override {
        STELVAN_NEEDS_FILE(GetParam());
        pages_ = std::make_shared<MemoryPages>(bytesOf(GetParam().path()));
        scope_.emplace(pages_);
        catalog_.emplace(*pages_);
    }

    // The entries that a table's rows give to one of its indexes, in order.
    std::vector<Entry> entriesFromRows(const std::shared_ptr<const jet::TableDef>& table,
                                       const jet::RealIndexDef& index) {
        const jet::KeyEncoder encoder(table->info.columns, index.columns);
        jet::RowReader reader(*pages_, table, jet::allColumns(table->info));
        std::vector<Entry> entries;
        jet::IndexKey key;
        for (jet::TableScan scan(*pages_, *table); scan.next();) {
            reader.set(scan.row().bytes, scan.row().target.page);
            std::vector<jet::ValueView> values;
            for (std::size_t part = 0; part < encoder.partCount(); ++part) {
                values.push_back(reader.value(encoder.column(part)));
            }
            encoder.encode(values, key);
            const jet::IndexTree tree(*pages_, index.root, table->page);
            jet::IndexKey variant;
            if (!tree.contains(key.bytes, scan.id()) && encoder.encodeVariant(values, variant)) {
                key = variant;
                ++variants_;
            }
            if (!index.ignoreNulls() || !key.allNull) entries.push_back({key.bytes, scan.id()});
        }
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    template <typename Check>
    void forEachIndex(Check&& check) {
        for (const jet::CatalogEntry& entry : catalog_->entries()) {
            if (!entry.isTable()) continue;
            const auto table = catalog_->definition(entry);
            for (const jet::RealIndexDef& index : table->trees) {
                SCOPED_TRACE(entry.name + " root " + std::to_string(index.root));
                check(jet::IndexTree(*pages_, index.root, table->page),
                      entriesFromRows(table, index));
            }
        }
    }

    int variants_ = 0;
    std::shared_ptr<MemoryPages> pages_;
    std::optional<jet::ReadScope> scope_;
    std::optional<jet::Catalog> catalog_;
};

std::vector<Entry> walk(jet::TreeCursor cursor) {
    std::vector<Entry> entries;
    while (cursor.next())
        entries.push_back({{cursor.key().begin(), cursor.key().end()}, cursor.rowId()});
    return entries;
}

TEST_P(RealIndexEntries, AreThoseThatTheRowsGiveInTheirOrder) {
    forEachIndex([](const jet::IndexTree& tree, const std::vector<Entry>& expected) {
        EXPECT_EQ(walk(tree.all()), expected);
    });
    // A later engine wrote the text of all Latin characters in this file.
    EXPECT_EQ(variants_, label(GetParam()) == "foreign_shapes_compressed_text" ? 1 : 0);
}

TEST_P(RealIndexEntries, EachIsFoundByItsKey) {
    forEachIndex([](const jet::IndexTree& tree, const std::vector<Entry>& expected) {
        std::map<std::vector<std::uint8_t>, std::vector<Entry>> byKey;
        for (const Entry& entry : expected) byKey[entry.key].push_back(entry);
        for (const auto& [key, entries] : byKey) {
            ASSERT_EQ(walk(tree.withKey(key)), entries);
            ASSERT_EQ(tree.find(key), entries.front().row);
            ASSERT_EQ(tree.holdsOther(key, entries.front().row), entries.size() > 1);
            ASSERT_TRUE(tree.holdsOther(key, {1, 0}));
            ASSERT_TRUE(tree.contains(key, entries.back().row));
            ASSERT_FALSE(tree.contains(key, {1, 0}));
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Models, RealIndexEntries,
                         testing::ValuesIn(byEveryMaker(allNames({"gem_large.mdb"}))),
                         [](const auto& file) { return label(file.param); });

}  // namespace
}  // namespace stelvan::test
