#include <algorithm>

#include "jet/disk/page.h"
#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/map_rows.h"
#include "jet/pages/page_allocation.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/text.h"
#include "jet/tables/catalog.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/definition_writer.h"
#include "jet/tables/object_registry.h"
#include "jet/tables/schema_change.h"
#include "jet/tables/stored_table.h"
#include "jet/tables/table_layout.h"
#include "jet/tables/table_scan.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

namespace {

using Columns = std::vector<std::size_t>;

/// One of the two tables, with its columns of the relationship.
struct Side {
    std::shared_ptr<const TableDef> table;
    Columns columns;
};

Side findSide(SharedDatabase& file, const std::string& name,
              const std::vector<std::string>& columns) {
    const CatalogEntry* entry = file.catalog().findTable(name);
    if (entry == nullptr) throw Error::of(ErrorKind::NoSuchTable, name);
    Side side{file.catalog().definition(*entry), {}};
    for (const std::string& column : columns) {
        const auto position = side.table->info.findColumn(column);
        if (!position) {
            throw Error(ErrorKind::NoSuchColumn,
                        "The table '" + name + "' has no column '" + column + "'.")
                .about(column);
        }
        side.columns.push_back(*position);
    }
    return side;
}

void checkPairs(const RelationshipInfo& relationship, const Side& parent, const Side& child) {
    const bool count = !parent.columns.empty() && parent.columns.size() == child.columns.size() &&
                       parent.columns.size() <= real_index::kColumnCount;
    if (!count)
        throw Error(ErrorKind::Misuse, "A relationship needs as many columns on both sides.");
    for (std::size_t i = 0; i < parent.columns.size(); ++i) {
        const ColumnInfo& left = parent.table->info.columns[parent.columns[i]];
        const ColumnInfo& right = child.table->info.columns[child.columns[i]];
        if (left.type == right.type) continue;
        throw Error(ErrorKind::TypeMismatch, "The columns '" + left.name + "' and '" + right.name +
                                                 "' are not of one type, as the relationship '" +
                                                 relationship.name + "' needs them.")
            .about(right.name);
    }
}

Columns columnsOf(const RealIndexDef& tree) {
    Columns columns;
    for (const IndexColumn& part : tree.columns) columns.push_back(part.column);
    return columns;
}

std::optional<std::uint32_t> treeOver(const TableDef& table, const Columns& columns, bool unique) {
    for (std::size_t i = 0; i < table.trees.size(); ++i) {
        if (unique && !table.trees[i].unique()) continue;
        if (!table.trees[i].ignoreNulls() && columnsOf(table.trees[i]) == columns)
            return static_cast<std::uint32_t>(i);
    }
    return std::nullopt;
}

std::uint32_t nextNumber(const TableDef& table) {
    std::uint32_t next = 0;
    for (const LogicalIndexDef& index : table.logical) next = std::max(next, index.number + 1);
    return next;
}

std::string freeName(const TableDef& table, std::string wanted) {
    const auto taken = [&](const std::string& name) {
        return std::ranges::any_of(table.info.indexes,
                                   [&](const IndexInfo& i) { return sameName(i.name, name); });
    };
    std::string name = wanted;
    for (int suffix = 1; taken(name); ++suffix) name = wanted + std::to_string(suffix);
    return name;
}

// Real files call the parent's side ".rB", ".rC" ... by its number.
std::string parentIndexName(const TableDef& table, std::uint32_t number) {
    return freeName(table, std::string(".r") + static_cast<char>('A' + number % 26));
}

class Enforcement {
public:
    Enforcement(SharedDatabase& file, const RelationshipInfo& relationship, Side parent, Side child)
        : file_(file),
          relationship_(relationship),
          parent_(std::move(parent)),
          child_(std::move(child)) {}

    /// Throws where the relationship cannot be enforced, or does not hold for the rows that are
    /// there.
    void check() {
        const auto tree = treeOver(*parent_.table, parent_.columns, true);
        if (!tree) {
            throw Error(ErrorKind::NoSuchIndex,
                        "The table '" + parent_.table->info.name +
                            "' has no unique index over the columns of the relationship '" +
                            relationship_.name + "'.")
                .about(parent_.table->info.name);
        }
        parentTree_ = *tree;
        childTree_ = treeOver(*child_.table, child_.columns, false);
        for (const Side* side : {&parent_, &child_}) {
            if (side->table->logical.size() >= definition::kMaxIndexes) {
                throw Error(ErrorKind::Misuse,
                            "The table '" + side->table->info.name + "' has 32 indexes already.")
                    .about(side->table->info.name);
            }
        }
        collectChildKeys();
    }

    void apply() {
        const bool sameTable = parent_.table->page == child_.table->page;
        const std::uint32_t childNumber = nextNumber(*child_.table);
        const std::uint32_t parentNumber = nextNumber(*parent_.table) + (sameTable ? 1 : 0);
        DefinitionBytes bytes = readDefinitionBytes(file_.pages(), child_.table->page);
        DefinitionParts parts = splitDefinition(bytes);
        const std::uint32_t real = childTree_ ? *childTree_ : addTree(parts);
        parts.addLogicalIndex(
            link(childNumber, real, logical_index::kChildSide, parentNumber, parent_.table->page),
            freeName(*child_.table, relationship_.name));
        writeDefinition(file_.pages(), bytes.pages, parts.join());
        bytes = readDefinitionBytes(file_.pages(), parent_.table->page);
        parts = splitDefinition(bytes);
        parts.addLogicalIndex(link(parentNumber, parentTree_, logical_index::kParentSide,
                                   childNumber, child_.table->page),
                              parentIndexName(*parent_.table, parentNumber));
        writeDefinition(file_.pages(), bytes.pages, parts.join());
        file_.catalog().forget();
    }

private:
    [[nodiscard]] LogicalIndexDef link(std::uint32_t number, std::uint32_t real, std::uint8_t side,
                                       std::uint32_t partner, PageNumber otherTable) const {
        LogicalIndexDef index;
        index.number = number;
        index.real = real;
        index.side = side;
        index.partner = static_cast<std::int32_t>(partner);
        index.otherTable = otherTable;
        index.cascadeUpdates = relationship_.cascadeUpdates ? 1 : 0;
        index.cascadeDeletes = relationship_.cascadeDeletes ? 1 : 0;
        index.kind = logical_index::kForeign;
        return index;
    }

    [[nodiscard]] std::vector<IndexColumn> childParts() const {
        std::vector<IndexColumn> parts;
        for (const std::size_t column : child_.columns) parts.push_back({column, true});
        return parts;
    }

    void collectChildKeys() {
        const std::vector<IndexColumn> parts = childParts();
        const KeyEncoder encoder(child_.table->info.columns, parts);
        const RealIndexDef& unique = parent_.table->trees[parentTree_];
        const KeyEncoder parentEncoder(parent_.table->info.columns, unique.columns);
        const IndexTree parents(file_.pages(), unique.root, parent_.table->page);
        RowReader reader(file_.pages(), child_.table, child_.columns);
        TableScan scan(file_.pages(), *child_.table);
        std::vector<ValueView> values;
        IndexKey parentKey;
        while (scan.next()) {
            reader.set(scan.row().bytes, scan.row().target.page);
            values.clear();
            for (const std::size_t column : child_.columns) values.push_back(reader.value(column));
            IndexKey key;
            encoder.encode(values, key);
            parentEncoder.encode(values, parentKey);
            if (!key.anyNull && !parents.find(parentKey.bytes)) throwMissingParent();
            keys_.emplace_back(scan.id(), std::move(key));
        }
    }

    [[noreturn]] void throwMissingParent() const {
        const std::string& name = parent_.table->info.name;
        throw Error(ErrorKind::MissingParent, "The table '" + child_.table->info.name +
                                                  "' has rows without a related record in table '" +
                                                  name + "'.")
            .about(name);
    }

    std::uint32_t addTree(DefinitionParts& parts) {
        RealIndexDef tree;
        tree.columns = childParts();
        tree.flags = real_index::kAlways;
        tree.map = MapRows(file_.pages(), {child_.table->ownedMap.page}).add();
        OwnedPages pages(file_.pages(), tree.map);
        tree.root = pages.allocate();
        IndexTree::makeRoot(file_.pages().edit(tree.root), child_.table->page);
        IndexTree entries(file_.pages(), tree.root, child_.table->page, &pages);
        std::uint32_t distinct = 0;
        for (const auto& [row, key] : keys_) distinct += entries.insert(key.bytes, row) ? 1 : 0;
        const std::uint32_t position = parts.addRealIndex(tree, child_.table->info);
        putU32(parts.statistics, position * statistics::kSize,
               static_cast<std::uint32_t>(keys_.size()));
        putU32(parts.statistics, position * statistics::kSize + statistics::kDistinct, distinct);
        return position;
    }

    SharedDatabase& file_;
    const RelationshipInfo& relationship_;
    Side parent_;
    Side child_;
    std::uint32_t parentTree_ = 0;
    std::optional<std::uint32_t> childTree_;
    std::vector<std::pair<RowId, IndexKey>> keys_;
};

void addRelationshipRows(SharedDatabase& file, const RelationshipInfo& relationship,
                         const Side& parent, const Side& child) {
    const auto table = file.catalog().definitionAt(kRelationshipsPage);
    const auto column = [&](std::string_view name) { return systemColumn(*table, name); };
    std::uint32_t bits = 0;
    if (!relationship.enforced) bits |= relationship::kNotEnforced;
    if (relationship.cascadeUpdates) bits |= relationship::kCascadeUpdates;
    if (relationship.cascadeDeletes) bits |= relationship::kCascadeDeletes;
    if (treeOver(*child.table, child.columns, true)) bits |= relationship::kOneToOne;
    for (std::size_t i = 0; i < parent.columns.size(); ++i) {
        const std::vector<ColumnValue> values = {
            {column("szRelationship"), relationship.name},
            {column("grbit"), static_cast<std::int32_t>(bits)},
            {column("ccolumn"), static_cast<std::int32_t>(parent.columns.size())},
            {column("icolumn"), static_cast<std::int32_t>(i)},
            {column("szObject"), child.table->info.name},
            {column("szColumn"), child.table->info.columns[child.columns[i]].name},
            {column("szReferencedObject"), parent.table->info.name},
            {column("szReferencedColumn"), parent.table->info.columns[parent.columns[i]].name}};
        file.writer().insert(table, values);
    }
}

}  // namespace

void createRelationship(SharedDatabase& file, const RelationshipInfo& relationship, DateTime now) {
    checkName(relationship.name);
    const Side parent = findSide(file, relationship.parentTable, relationship.parentColumns);
    const Side child = findSide(file, relationship.childTable, relationship.childColumns);
    checkPairs(relationship, parent, child);
    for (const RelationshipInfo& other : file.catalog().relationships()) {
        if (!sameName(other.name, relationship.name)) continue;
        throw Error(ErrorKind::TableExists,
                    "A relationship '" + relationship.name + "' already exists.")
            .about(relationship.name);
    }
    Enforcement enforcement(file, relationship, parent, child);
    if (relationship.enforced) enforcement.check();
    ObjectRegistry objects(file, now);

    WriteScope step(file.sharedPages());
    if (relationship.enforced) enforcement.apply();
    addRelationshipRows(file, relationship, parent, child);
    objects.addRelationship(relationship.name);
    file.catalog().forget();
    step.commit();
}

}  // namespace stelvan::jet
