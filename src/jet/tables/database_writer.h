// Inserting, changing and deleting rows of any table, with what enforced relationships make follow.
//
// Stands on the writers of the single tables, which know nothing of one another, and on the rules
// of relationships, which only say what has to follow. Needs a unit of work; pages and catalogue
// must outlive it.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "jet/disk/page_file.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/catalog.h"
#include "jet/tables/relationship_rules.h"
#include "jet/tables/row_change.h"
#include "jet/tables/table_writer.h"

namespace stelvan::jet {

class DatabaseWriter {
public:
    using Definition = std::shared_ptr<const TableDef>;

    DatabaseWriter(PageFile& file, Catalog& catalog)
        : file_(&file), catalog_(&catalog), rules_(file, catalog) {}

    RowId insert(const Definition& table, std::span<const ColumnValue> values);
    void update(const Definition& table, RowId id, std::span<const ColumnValue> values);
    void erase(const Definition& table, RowId id);

    /// From now on every change is added to `changes` (nowhere for null), which must outlive its
    /// use. Gives what was used before.
    RowChanges* note(RowChanges* changes) { return std::exchange(noted_, changes); }

    /// Throws MissingParent or HasChildren for what the unit of work would leave behind.
    void judge() { rules_.judge(); }
    /// The unit of work has ended.
    void forget() { rules_.forget(); }

private:
    /// The one writer of a table, kept as long as its definition.
    [[nodiscard]] TableWriter& writerOf(const Definition& table);
    /// What the row holds; nothing while nobody wants to know.
    [[nodiscard]] std::optional<std::vector<Value>> noteOf(const Definition& table, RowId id);
    void note(const Definition& table, RowId id, std::optional<std::vector<Value>> before,
              std::optional<std::vector<Value>> after);
    void follow(const TableDef& table, RowId id, const std::vector<TouchedLink>& touched);
    void apply(const Cascade& cascade);

    PageFile* file_;
    Catalog* catalog_;
    RelationshipRules rules_;
    std::unordered_map<PageNumber, std::unique_ptr<TableWriter>> writers_;
    std::uint64_t generation_ = 0;
    RowChanges* noted_ = nullptr;
};

}  // namespace stelvan::jet
