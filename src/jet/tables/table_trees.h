// The trees of one table, kept in step with its rows: keys of the row as it was and as it will be,
// the rules about nulls and duplicates, and the entries.
#pragma once

#include <optional>
#include <vector>

#include "jet/disk/page_file.h"
#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/pages/page_allocation.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

class TableTrees {
public:
    TableTrees(PageFile& file, const TableDef& table);
    TableTrees(const TableTrees&) = delete;
    TableTrees& operator=(const TableTrees&) = delete;

    /// Chooses the trees of which `changes(column)` holds for a column; the others stay as they
    /// are. Throws UnsupportedOrder where one of the chosen cannot be written.
    template <typename Changes>
    void choose(Changes&& changes) {
        for (Tree& tree : trees_) {
            tree.chosen = false;
            for (const IndexColumn& part : tree.definition->columns)
                tree.chosen |= changes(part.column);
            if (tree.chosen && !tree.encoder) throwUnsupported(tree);
        }
    }

    /// Makes the keys of the row as it is, and as it will be, from `valueOf(column)`.
    template <typename ValueOf>
    void makeOldKeys(ValueOf&& valueOf) {
        for (Tree& tree : trees_) {
            if (!tree.chosen) continue;
            collect(tree, valueOf);
            tree.encoder->encode(values_, tree.oldKey);
            tree.hasOldVariant = tree.encoder->encodeVariant(values_, tree.oldVariant);
        }
    }
    template <typename ValueOf>
    void makeNewKeys(ValueOf&& valueOf) {
        for (Tree& tree : trees_) {
            if (!tree.chosen) continue;
            collect(tree, valueOf);
            tree.encoder->encode(values_, tree.newKey);
            tree.hasNewVariant =
                tree.definition->unique() && tree.encoder->encodeVariant(values_, tree.newVariant);
        }
    }
    /// Leaves out the trees whose old and new keys are equal.
    void skipUnchanged();

    /// Judges the new keys of the row `self`, or of a new row. Throws NullInKey, DuplicateKey,
    /// RowTooLarge.
    void check(std::optional<RowId> self);

    void removeOldEntries(RowId row);
    /// Adds the new keys' entries and counts keys that were not there before.
    void addNewEntries(RowId row);

private:
    struct Tree {
        Tree(PageFile& file, const RealIndexDef& index, std::size_t at)
            : definition(&index),
              position(at),
              pages(file, index.map),
              required(index.required()) {}

        const RealIndexDef* definition;
        std::size_t position;
        std::optional<KeyEncoder> encoder;  // none: an order that cannot be written
        OwnedPages pages;
        bool required = false;
        bool chosen = false;
        IndexKey oldKey;
        IndexKey newKey;
        IndexKey
            oldVariant;  // another key under which the row may stand; see KeyEncoder::encodeVariant
        IndexKey newVariant;
        bool hasOldVariant = false;
        bool hasNewVariant = false;
        IndexPlace place;  // where a new row's key was looked for and not found, if it has steps

        /// Whether a row with this key has an entry.
        [[nodiscard]] bool holds(const IndexKey& key) const {
            return !(definition->ignoreNulls() && key.allNull);
        }
    };

    template <typename ValueOf>
    void collect(const Tree& tree, ValueOf& valueOf) {
        values_.clear();
        for (const IndexColumn& part : tree.definition->columns)
            values_.push_back(valueOf(part.column));
    }
    [[noreturn]] void throwUnsupported(const Tree& tree) const;
    [[nodiscard]] std::string describe(const Tree& tree) const;
    [[nodiscard]] IndexTree entries(Tree& tree) const {
        return {*file_, tree.definition->root, table_->page, &tree.pages};
    }
    void checkTree(Tree& tree, std::optional<RowId> self) const;
    [[nodiscard]] bool taken(const Tree& tree, const IndexKey& key,
                             std::optional<RowId> self) const;
    [[nodiscard]] bool takenByAny(Tree& tree, std::optional<RowId> self) const;
    void countDistinct(const Tree& tree);

    PageFile* file_;
    const TableDef* table_;
    std::vector<Tree> trees_;
    std::vector<ValueView> values_;
};

}  // namespace stelvan::jet
