// Damage to indexes that the checker must find.
#include "jet/check/check_index.h"

#include <gtest/gtest.h>

#include "tests/jet/check/damaged_file.h"

namespace stelvan::jet {
namespace {

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

}  // namespace
}  // namespace stelvan::jet
