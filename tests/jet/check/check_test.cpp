// The checker finds nothing wrong with real files, and finds each kind of damage.
#include "jet/check/check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "jet/disk/commit_slots.h"
#include "jet/index/index_page_editor.h"
#include "jet/pages/data_page.h"
#include "jet/pages/header.h"
#include "jet/pages/long_value.h"
#include "jet/pages/usage_map.h"
#include "jet/rows/row_codec.h"
#include "jet/tables/catalog.h"
#include "jet/tables/table_scan.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/memory_pages.h"
#include "tests/support/model_names.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

using test::MemoryPages;

std::string describe(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += (finding.isNote ? "note " : "fault ") + std::to_string(finding.page) + ": " +
                finding.text + "\n";
    }
    return text;
}

class CheckWhole : public testing::TestWithParam<test::ModelFile> {};

TEST_P(CheckWhole, HasNoFault) {
    STELVAN_NEEDS_FILE(GetParam());
    const std::vector<Finding> findings = check(GetParam().path());
    EXPECT_FALSE(anyFault(findings)) << describe(findings);
}

INSTANTIATE_TEST_SUITE_P(Models, CheckWhole,
                         testing::ValuesIn(test::byEveryMaker(test::allNames({"gem_large.mdb"}))),
                         [](const auto& file) { return test::label(file.param); });

TEST(Check, AFreshFileOfTheProviderIsSoundToTheLastRule) {
    STELVAN_NEEDS_SAMPLE("access/no_user_tables.mdb");
    const std::vector<Finding> findings =
        check(test::sample("access/no_user_tables.mdb"), {.strict = true});
    EXPECT_TRUE(findings.empty()) << describe(findings);
}

TEST(Check, WhatIsNoDatabaseIsRefusedAsByOpening) {
    EXPECT_THROW(static_cast<void>(check(test::model("refused/text_file/gem.mdb"))), Error);
}

// One model in memory, a place in it to damage, and the words that must be said about it.
class CheckDamage : public testing::Test {
protected:
    void load(const std::string& name) {
        file_ = std::make_shared<MemoryPages>(test::bytesOf(test::model(name)));
        scope_.emplace(file_);
        catalog_.emplace(*file_);
    }

    const TableDef& table(const std::string& name) {
        definition_ = catalog_->definition(*catalog_->findTable(name));
        return *definition_;
    }
    // Of a file that has but one.
    const TableDef& onlyTable() {
        for (const CatalogEntry& entry : catalog_->entries()) {
            if (entry.isTable() && !entry.isSystem()) definition_ = catalog_->definition(entry);
        }
        return *definition_;
    }
    PageNumber firstPage(const TableDef& definition) {
        return UsageMap(*file_, definition.ownedMap).next(0).value();
    }
    // A page of rows whose slot has the flags, and the slot.
    RecordPointer slotWith(const TableDef& definition, std::uint16_t flags) {
        const UsageMap owned(*file_, definition.ownedMap);
        for (auto page = owned.next(0); page; page = owned.next(*page + 1)) {
            const DataPage data(*page, file_->read(*page));
            for (std::size_t i = 0; i < data.slotCount(); ++i) {
                if (data.slot(i).flags == flags) return {*page, static_cast<std::uint8_t>(i)};
            }
        }
        ADD_FAILURE() << "the model has no such row";
        return {};
    }
    WritableBytes rowAt(RecordPointer where) {
        const Slot slot = DataPage(where.page, file_->read(where.page)).slot(where.slot);
        return file_->edit(where.page).subspan(slot.offset, slot.length);
    }
    void setSlotFlags(RecordPointer where, std::uint16_t flags) {
        const std::size_t at = data_page::kSlots + data_page::kSlotSize * where.slot;
        const WritablePageBytes page = file_->edit(where.page);
        putU16(page, at,
               static_cast<std::uint16_t>((u16At(page, at) & data_page::kOffsetMask) | flags));
    }
    void flipInMap(RecordPointer map, PageNumber page) {
        const WritableBytes row = rowAt(map);
        ASSERT_EQ(row[0], usage_map::kInline);
        page -= u32At(row, usage_map::kStart);
        row[usage_map::kBits + page / 8] ^= static_cast<std::uint8_t>(1U << (page % 8));
    }
    // The first row of a table whose long value is of this kind: the bytes of its reference.
    WritableBytes longValueReference(const TableDef& definition, std::uint32_t kind) {
        for (TableScan scan(*file_, definition); scan.next();) {
            const RowView row(definition, scan.row().bytes, scan.row().target.page);
            for (std::size_t i = 0; i < definition.info.columns.size(); ++i) {
                if (!isLongValue(definition.info.columns[i].type)) continue;
                const auto stored = row.stored(i);
                if (!stored || readReference(*stored).kind != kind) continue;
                const WritableBytes bytes = rowAt(scan.row().target);
                return bytes.subspan(
                    static_cast<std::size_t>(stored->data() - scan.row().bytes.data()),
                    stored->size());
            }
        }
        ADD_FAILURE() << "the model has no such long value";
        return {};
    }

    void expectFault(const std::string& words) {
        const std::vector<Finding> findings = check(file_);
        const bool said = std::ranges::any_of(findings, [&](const Finding& finding) {
            return !finding.isNote && finding.text.find(words) != std::string::npos;
        });
        EXPECT_TRUE(said) << "not said: " << words << "\n" << describe(findings);
    }

    std::shared_ptr<MemoryPages> file_;
    std::optional<WriteScope> scope_;
    std::optional<Catalog> catalog_;
    std::shared_ptr<const TableDef> definition_;
};

TEST_F(CheckDamage, WrongFreeSpaceOfADataPage) {
    load("gem.mdb");
    const PageNumber page = firstPage(table("secs_cusvar"));
    const WritablePageBytes bytes = file_->edit(page);
    putU16(bytes, data_page::kFree, static_cast<std::uint16_t>(u16At(bytes, data_page::kFree) + 1));
    expectFault("the free space of a data page is given as");
}

TEST_F(CheckDamage, RowsThatOverlap) {
    load("gem.mdb");
    const WritablePageBytes bytes = file_->edit(firstPage(table("secs_cusvar")));
    putU16(bytes, data_page::kSlots + 2, 4090);
    expectFault("does not lie within the page");
}

TEST_F(CheckDamage, APageOfAnotherOwner) {
    load("gem.mdb");
    putU32(file_->edit(firstPage(table("secs_cusvar"))), data_page::kOwner, 2);
    expectFault("names another owner");
}

TEST_F(CheckDamage, AWrongRowCount) {
    load("gem.mdb");
    putU32(file_->edit(table("secs_cusvar").page), definition::kRows, 299);
    expectFault("table secs_cusvar counts 299 rows but has 300.");
}

TEST_F(CheckDamage, AnAutoNumberThatWouldBeGivenOutAgain) {
    load("shapes/compressed_text.mdb");
    putU32(file_->edit(table("Table").page), definition::kAutoNumber, 2);
    expectFault("but remembers only 2.");
}

TEST_F(CheckDamage, AMissingIndexEntry) {
    load("gem.mdb");
    const TableDef& definition = table("secs_gemvar");
    const PageNumber root = definition.trees[0].root;
    IndexPageEditor editor(file_->edit(root), root, definition.page);
    ASSERT_TRUE(editor.page().isLeaf());
    editor.erase(0);
    expectFault("of table secs_gemvar lacks the entry of row");
}

TEST_F(CheckDamage, AnIndexEntryWithAnotherKey) {
    load("gem.mdb");
    const TableDef& definition = table("secs_gemvar");
    file_->edit(definition.trees[0].root)[index_page::kEntries + 1] ^= 1;
    expectFault("of table secs_gemvar has an entry that row");
}

TEST_F(CheckDamage, BitsLeftOverInAnIndexMask) {
    load("gem.mdb");
    file_->edit(table("secs_gemvar").trees[0].root)[index_page::kMask + 450] = 1;
    expectFault("the mask of an index page has bits behind its last entry.");
}

TEST_F(CheckDamage, IndexLeavesThatAreNotLinked) {
    load("gem_large.mdb");
    const TableDef& definition = table("secs_cusvar");
    const IndexPage root(file_->read(definition.trees[0].root), definition.trees[0].root,
                         definition.page);
    putU32(file_->edit(root.child(0)), index_page::kNext, 0);
    expectFault("an index leaf is not linked to its neighbours.");
}

TEST_F(CheckDamage, ASeparatorBelowItsEntries) {
    load("gem_large.mdb");
    const TableDef& definition = table("secs_cusvar");
    const PageNumber root = definition.trees[0].root;
    const std::size_t end = IndexPage(file_->read(root), root, definition.page).endOf(0);
    const WritablePageBytes bytes = file_->edit(root);
    bytes[index_page::kEntries + end - index_page::kChild - 1 - index_page::kRowPointer] -= 1;
    expectFault("an index entry lies above the separator of its page.");
}

TEST_F(CheckDamage, AnIndexPageThatItsMapDoesNotList) {
    load("gem.mdb");
    const RealIndexDef tree = table("secs_gemvar").trees[0];
    flipInMap(tree.map, tree.root);
    expectFault("but not listed for it.");
}

TEST_F(CheckDamage, AUniqueIndexWithEqualKeys) {
    load("gem.mdb");
    const TableDef& definition = table("secs_rpt_var");
    const DefinitionBytes joined = readDefinitionBytes(*file_, definition.page);
    ASSERT_EQ(joined.pages.size(), 1u);
    for (std::size_t at = definition::kStatistics; at + real_index::kSize < joined.bytes.size();
         ++at) {
        if (u32At(joined.bytes, at) != kRealIndexMark) continue;
        file_->edit(definition.page)[at + real_index::kFlags] |= real_index::kUnique;
    }
    expectFault("is unique, but row");
}

TEST_F(CheckDamage, APageWithTwoOwners) {
    load("gem.mdb");
    const PageNumber page = firstPage(table("secs_cusvar"));
    flipInMap(table("secs_gemvar").ownedMap, page);
    expectFault("the page belongs to two");
}

TEST_F(CheckDamage, APageThatIsUsedAndFree) {
    load("gem.mdb");
    flipInMap({kGlobalMapPage, kGlobalMapRow}, firstPage(table("secs_cusvar")));
    expectFault("the page is marked free but belongs to table secs_cusvar.");
}

TEST_F(CheckDamage, APageThatNobodyOwnsIsANoteUnlessTheCheckIsStrict) {
    load("shapes/no_user_tables.mdb");
    file_->append();
    flipInMap({kGlobalMapPage, kGlobalMapRow}, file_->pageCount() - 1);
    const std::vector<Finding> findings = check(file_);
    ASSERT_EQ(findings.size(), 1u) << describe(findings);
    EXPECT_TRUE(findings[0].isNote);
    EXPECT_EQ(findings[0].text, "1 pages, from this one on, are in use but belong to nobody.");
    EXPECT_TRUE(anyFault(check(file_, {.strict = true})));
}

TEST_F(CheckDamage, APageWithRoomThatIsNotTheTables) {
    load("gem.mdb");
    const PageNumber page = firstPage(table("secs_cusvar"));
    flipInMap(table("secs_gemvar").freeMap, page);
    expectFault("the page has room for table secs_gemvar but is none of its own.");
}

TEST_F(CheckDamage, ALongValueOfAnotherLength) {
    load("gem.mdb");
    const WritableBytes reference = longValueReference(table("secs_cusvar"), long_value::kSingle);
    reference[0] = static_cast<std::uint8_t>(reference[0] + 1);
    expectFault("a long value");
}

TEST_F(CheckDamage, ALongValueThatWasDeleted) {
    load("gem.mdb");
    const WritableBytes reference = longValueReference(table("secs_cusvar"), long_value::kSingle);
    setSlotFlags(readReference(reference).first, data_page::kDeleted);
    expectFault("a long value that is still in use was deleted.");
}

TEST_F(CheckDamage, AChainWithAnotherStamp) {
    load("shapes/long_memo.mdb");
    const WritableBytes reference = longValueReference(onlyTable(), long_value::kChain);
    putU32(reference, long_value::kStamp, u32At(reference, long_value::kStamp) + 1);
    expectFault("stamp is not that of its first page.");
}

TEST_F(CheckDamage, AChainThatEndsEarly) {
    load("shapes/long_memo.mdb");
    const WritableBytes reference = longValueReference(onlyTable(), long_value::kChain);
    putU32(reference, long_value::kLengthAndKind, u32At(reference, long_value::kLengthAndKind) + 5);
    expectFault("a long value ends too early.");
}

TEST_F(CheckDamage, AMovedRowWithoutItsPointer) {
    load("gem.mdb");
    setSlotFlags(slotWith(table("secs_cusvar"), data_page::kPointer), data_page::kDeleted);
    expectFault("a moved row of table secs_cusvar has lost its pointer.");
}

TEST_F(CheckDamage, AMovedRowThatAScanWouldSeeTwice) {
    load("gem.mdb");
    setSlotFlags(slotWith(table("secs_cusvar"), data_page::kHidden), 0);
    expectFault("a moved row is not marked as one that only its pointer leads to.");
}

TEST_F(CheckDamage, ADefinitionOfAnotherLength) {
    load("gem.mdb");
    const PageNumber page = table("secs_gemvar").page;
    const WritablePageBytes bytes = file_->edit(page);
    putU32(bytes, definition::kLength, u32At(bytes, definition::kLength) - 2);
    expectFault("does not end where its length says.");
}

TEST_F(CheckDamage, ATableThatIsNoDefinition) {
    load("gem.mdb");
    const PageNumber page = table("secs_gemvar").page;
    file_->edit(page)[0] = 1;
    expectFault("it is not a table definition.");
}

TEST_F(CheckDamage, WritingThatWasBrokenOff) {
    load("gem.mdb");
    setCommitSlot(file_->edit(0), 0);
    expectFault("commit slot 0 says that writing was broken off.");
}

TEST_F(CheckDamage, TwoTablesOfOneName) {
    load("gem.mdb");
    const RowId row = catalog_->findTable("secs_gemvar")->row;
    const auto located = locateRow(*file_, *catalog_->definitionAt(kObjectsPage), row);
    ASSERT_TRUE(located);
    const WritableBytes bytes = rowAt(located->target);
    const std::string from("g\0e\0m\0v", 7);
    const auto found = std::search(bytes.begin(), bytes.end(), from.begin(), from.end());
    ASSERT_NE(found, bytes.end());
    const std::string to("C\0U\0S\0V", 7);
    std::copy(to.begin(), to.end(), found);
    expectFault("two tables or queries are called");
}

TEST_F(CheckDamage, AChildWithoutAParent) {
    load("shapes/relationships.mdb");
    const RelationshipInfo relationship = catalog_->relationships().at(0);
    const TableDef& child = table(relationship.childTable);
    const std::size_t column = child.info.findColumn(relationship.childColumns.at(0)).value();
    ASSERT_TRUE(child.isFixed(column));
    TableScan scan(*file_, child);
    ASSERT_TRUE(scan.next());
    putU32(rowAt(scan.row().target), row::kFixed + child.storage[column].fixedOffset, 987654);
    expectFault("has no parent.");
}

TEST_F(CheckDamage, ARelationshipThatPointsOneWayOnly) {
    load("shapes/relationships.mdb");
    const TableDef& parent = table(catalog_->relationships().at(0).parentTable);
    const WritablePageBytes bytes = file_->edit(parent.page);
    for (std::size_t at = definition::kStatistics; at + logical_index::kSize < kPageSize; ++at) {
        const bool foreign = u32At(bytes, at) == kDefinitionMark &&
                             bytes[at + logical_index::kKind] == 2 &&
                             bytes[at + logical_index::kSide] == logical_index::kParentSide;
        if (foreign) putU32(bytes, at + logical_index::kPartner, 77);
    }
    expectFault("and its partner do not point at each other.");
}

TEST_F(CheckDamage, NoiseIsReportedAndNeverFollowed) {
    load("gem.mdb");
    std::mt19937 random(9);
    for (int round = 0; round < 150; ++round) {
        std::vector<std::pair<PageNumber, std::vector<std::uint8_t>>> before;
        for (int i = 0; i < 4; ++i) {
            const auto page = static_cast<PageNumber>(1 + random() % (file_->pageCount() - 1));
            const WritablePageBytes bytes = file_->edit(page);
            before.emplace_back(page, std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
            const std::size_t reach = i % 2 == 0 ? 64 : kPageSize;
            for (int k = 0; k < 8; ++k)
                bytes[random() % reach] = static_cast<std::uint8_t>(random());
        }
        EXPECT_NO_THROW(static_cast<void>(check(file_)));
        for (auto old = before.rbegin(); old != before.rend(); ++old) {
            std::copy(old->second.begin(), old->second.end(), file_->edit(old->first).begin());
        }
    }
    EXPECT_FALSE(anyFault(check(file_)));
}

}  // namespace
}  // namespace stelvan::jet
