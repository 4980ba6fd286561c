// The checker finds nothing wrong with whole files, and finds each kind of damage.
#include "jet/check/check.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/jet/check/damaged_file.h"
#include "tests/support/model_names.h"

namespace stelvan::jet {
namespace {

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
