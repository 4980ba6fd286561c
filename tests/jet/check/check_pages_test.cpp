// Damage to pages and to the books of their owners that the checker must find.
#include "jet/check/check_pages.h"

#include <gtest/gtest.h>

#include "tests/jet/check/damaged_file.h"

namespace stelvan::jet {
namespace {

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

}  // namespace
}  // namespace stelvan::jet
