#include "jet/tables/table_trees.h"

#include <string>

#include "jet/disk/page.h"
#include "jet/index/index_page.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

TableTrees::TableTrees(PageFile& file, const TableDef& table) : file_(&file), table_(&table) {
    for (std::size_t i = 0; i < table.trees.size(); ++i) {
        const RealIndexDef& definition = table.trees[i];
        Tree tree(file, definition, i);
        if (KeyEncoder::canEncode(table.info.columns, definition.columns)) {
            tree.encoder.emplace(table.info.columns, definition.columns);
        }
        for (const IndexInfo& index : table.info.indexes)
            tree.required |= index.primary && index.tree == i;
        trees_.push_back(std::move(tree));
    }
}

std::string TableTrees::describe(const Tree& tree) const {
    std::string name = "an index";
    for (const IndexInfo& index : table_->info.indexes) {
        if (index.tree != tree.position) continue;
        name = "the index '" + index.name + "'";
        if (!index.foreign) break;
    }
    return name + " of the table '" + table_->info.name + "'";
}

void TableTrees::throwUnsupported(const Tree& tree) const {
    throw Error(ErrorKind::UnsupportedOrder,
                "The text order of " + describe(tree) +
                    " is not known, so that its keys cannot be written.")
        .about(table_->info.name);
}

void TableTrees::skipUnchanged() {
    for (Tree& tree : trees_) {
        if (tree.chosen && tree.oldKey == tree.newKey) tree.chosen = false;
    }
}

void TableTrees::check(std::optional<RowId> self) {
    for (Tree& tree : trees_) {
        tree.place.steps.clear();
        if (tree.chosen) checkTree(tree, self);
    }
}

void TableTrees::checkTree(Tree& tree, std::optional<RowId> self) const {
    const IndexKey& key = tree.newKey;
    if (tree.required && key.anyNull) {
        throw Error(ErrorKind::NullInKey, "A column of " + describe(tree) + " has no value.")
            .about(table_->info.name);
    }
    if (key.bytes.size() + index_page::kRowPointer > kMaxIndexEntry) {
        throw Error(ErrorKind::RowTooLarge, "The key for " + describe(tree) + " is too long.")
            .about(table_->info.name);
    }
    // Nulls never collide.
    if (!tree.definition->unique() || key.anyNull) return;
    if (!takenByAny(tree, self)) return;
    throw Error(ErrorKind::DuplicateKey,
                "A row with the same key is in " + describe(tree) + " already.")
        .about(table_->info.name);
}

// A new row's key is looked for where it will be added, so that the way there need not be searched
// twice.
bool TableTrees::takenByAny(Tree& tree, std::optional<RowId> self) const {
    if (tree.hasNewVariant && taken(tree, tree.newVariant, self)) return true;
    if (self) return taken(tree, tree.newKey, self);
    const IndexTree index(*file_, tree.definition->root, table_->page);
    return index.find(tree.newKey.bytes, tree.place).has_value();
}

bool TableTrees::taken(const Tree& tree, const IndexKey& key, std::optional<RowId> self) const {
    const IndexTree index(*file_, tree.definition->root, table_->page);
    return self ? index.holdsOther(key.bytes, *self) : index.find(key.bytes).has_value();
}

void TableTrees::removeOldEntries(RowId row) {
    for (Tree& tree : trees_) {
        if (!tree.chosen || !tree.holds(tree.oldKey)) continue;
        IndexTree index = entries(tree);
        const bool asVariant = tree.hasOldVariant && !index.contains(tree.oldKey.bytes, row);
        index.remove(asVariant ? tree.oldVariant.bytes : tree.oldKey.bytes, row);
    }
}

void TableTrees::addNewEntries(RowId row) {
    for (Tree& tree : trees_) {
        if (!tree.chosen || !tree.holds(tree.newKey)) continue;
        if (entries(tree).insert(tree.newKey.bytes, row, tree.place)) countDistinct(tree);
    }
}

void TableTrees::countDistinct(const Tree& tree) {
    const std::size_t at =
        definition::kStatistics + tree.position * statistics::kSize + statistics::kDistinct;
    const WritablePageBytes page = file_->edit(table_->page);
    putU32(page, at, u32At(page, at) + 1);
}

}  // namespace stelvan::jet
