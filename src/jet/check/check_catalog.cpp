#include "jet/check/check_catalog.h"

#include <algorithm>
#include <set>

#include "jet/disk/page.h"
#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/pages/fixed_pages.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/text.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/table_scan.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

namespace {

class CatalogCheck {
public:
    CatalogCheck(PageFile& file, Catalog& catalog, CheckLog& log)
        : file_(file), catalog_(catalog), log_(log) {}

    void run() {
        log_.attempt(kObjectsPage, [&] { checkNames(); });
        log_.attempt(kAccessEntriesPage, [&] { checkAccessEntries(); });
        for (const CatalogEntry& entry : catalog_.entries()) {
            if (!entry.isTable()) continue;
            log_.attempt(entry.definitionPage(), [&] { checkForeignIndexes(entry); });
        }
        log_.attempt(kRelationshipsPage, [&] {
            for (const RelationshipInfo& relationship : catalog_.relationships()) {
                log_.attempt(kRelationshipsPage, [&] { checkRelationship(relationship); });
            }
        });
    }

private:
    void checkNames() {
        std::set<std::string> names;
        std::set<std::int32_t> ids;
        for (const CatalogEntry& entry : catalog_.entries()) {
            if (!ids.insert(entry.id).second) {
                log_.fault(entry.row.page,
                           "two objects of the catalogue have the number of '" + entry.name + "'.");
            }
            const bool named = entry.isTable() || entry.type == catalogue::kTypeQuery;
            if (named && !names.insert(foldName(entry.name)).second) {
                log_.fault(entry.row.page,
                           "two tables or queries are called '" + entry.name + "'.");
            }
        }
    }

    // Without access entries the engine reports missing permissions.
    void checkAccessEntries() {
        const auto table = catalog_.definitionAt(kAccessEntriesPage);
        const std::size_t column = systemColumn(*table, "ObjectId");
        RowReader reader(file_, table, {column});
        std::set<std::int32_t> served;
        std::set<std::int32_t> known;
        for (const CatalogEntry& entry : catalog_.entries()) known.insert(entry.id);
        for (TableScan scan(file_, *table); scan.next();) {
            reader.set(scan.row().bytes, scan.row().target.page);
            const ValueView value = reader.value(column);
            const auto* id = std::get_if<std::int32_t>(&value);
            if (id == nullptr) continue;
            served.insert(*id);
            if (!known.contains(*id)) {
                log_.note(scan.id().page, "an access entry is for object " + std::to_string(*id) +
                                              ", which does not exist.");
            }
        }
        for (const CatalogEntry& entry : catalog_.entries()) {
            const bool needed = entry.isTable() || entry.type == catalogue::kTypeQuery ||
                                entry.type == catalogue::kTypeRelationship;
            if (needed && !served.contains(entry.id)) {
                log_.note(entry.row.page, "object '" + entry.name + "' has no access entries.");
            }
        }
    }

    // The two indexes of a relationship point at each other.
    void checkForeignIndexes(const CatalogEntry& entry) {
        const auto table = catalog_.definition(entry);
        for (std::size_t i = 0; i < table->logical.size(); ++i) {
            const LogicalIndexDef& index = table->logical[i];
            if (index.kind != logical_index::kForeign) continue;
            const std::string where = "the relationship index '" + table->info.indexes[i].name +
                                      "' of table " + entry.name;
            if (catalog_.findTableAt(index.otherTable) == nullptr) {
                log_.fault(table->page, where + " leads to a table that does not exist.");
                continue;
            }
            const auto other = catalog_.definitionAt(index.otherTable);
            const auto partner =
                std::ranges::find_if(other->logical, [&](const LogicalIndexDef& candidate) {
                    return static_cast<std::int64_t>(candidate.number) == index.partner;
                });
            if (partner == other->logical.end() || partner->kind != logical_index::kForeign ||
                partner->otherTable != table->page || partner->side == index.side ||
                partner->partner != static_cast<std::int32_t>(index.number)) {
                log_.fault(table->page, where + " and its partner do not point at each other.");
            } else if (partner->cascadeUpdates != index.cascadeUpdates ||
                       partner->cascadeDeletes != index.cascadeDeletes) {
                log_.fault(table->page, where + " and its partner cascade differently.");
            }
        }
    }

    void checkRelationship(const RelationshipInfo& relationship) {
        const std::string where = "relationship '" + relationship.name + "'";
        const bool listed = std::ranges::any_of(catalog_.entries(), [&](const CatalogEntry& entry) {
            return entry.type == catalogue::kTypeRelationship &&
                   sameName(entry.name, relationship.name);
        });
        if (!listed) log_.fault(kRelationshipsPage, where + " is no object of the catalogue.");
        if (!relationship.enforced) return;
        const CatalogEntry* parent = catalog_.findTable(relationship.parentTable);
        const CatalogEntry* child = catalog_.findTable(relationship.childTable);
        if (parent == nullptr || child == nullptr) {
            log_.fault(kRelationshipsPage, where + " names a table that does not exist.");
            return;
        }
        const auto childDef = catalog_.definition(*child);
        const auto parentDef = catalog_.definition(*parent);
        const std::optional<std::size_t> foreign =
            childIndex(*childDef, relationship, parentDef->page);
        if (!foreign) {
            log_.fault(childDef->page, where + " is enforced, but has no index in its table.");
            return;
        }
        checkChildren(where, *parentDef, childDef, childDef->logical[*foreign]);
    }

    static std::optional<std::size_t> childIndex(const TableDef& child,
                                                 const RelationshipInfo& relationship,
                                                 PageNumber parent) {
        for (std::size_t i = 0; i < child.logical.size(); ++i) {
            const LogicalIndexDef& index = child.logical[i];
            if (index.side == logical_index::kChildSide && index.otherTable == parent &&
                sameName(child.info.indexes[i].name, relationship.name)) {
                return i;
            }
        }
        return std::nullopt;
    }

    // Every child without nulls in its key has a parent. The columns of both trees stand in one
    // order.
    void checkChildren(const std::string& where, const TableDef& parent,
                       const std::shared_ptr<const TableDef>& child,
                       const LogicalIndexDef& foreign) {
        const auto partner =
            std::ranges::find_if(parent.logical, [&](const LogicalIndexDef& candidate) {
                return static_cast<std::int64_t>(candidate.number) == foreign.partner;
            });
        if (partner == parent.logical.end()) return;
        const RealIndexDef& parentTree = parent.trees[partner->real];
        const RealIndexDef& childTree = child->trees[foreign.real];
        if (parentTree.columns.size() != childTree.columns.size()) {
            log_.fault(child->page, where + " joins different numbers of columns.");
            return;
        }
        if (!KeyEncoder::canEncode(parent.info.columns, parentTree.columns)) return;
        const KeyEncoder encoder(parent.info.columns, parentTree.columns);
        const IndexTree parents(file_, parentTree.root, parent.page);
        RowReader reader(file_, child, allColumns(child->info));
        std::vector<ValueView> values(childTree.columns.size());
        IndexKey key;
        for (TableScan scan(file_, *child); scan.next();) {
            reader.set(scan.row().bytes, scan.row().target.page);
            for (std::size_t i = 0; i < values.size(); ++i) {
                values[i] = reader.value(childTree.columns[i].column);
            }
            encoder.encode(values, key);
            if (key.anyNull || parents.find(key.bytes)) continue;
            if (encoder.encodeVariant(values, key) && parents.find(key.bytes)) continue;
            log_.fault(scan.id().page, where + " is broken: row " + std::to_string(scan.id().slot) +
                                           " of this page has no parent.");
        }
    }

    PageFile& file_;
    Catalog& catalog_;
    CheckLog& log_;
};

}  // namespace

void checkCatalog(PageFile& file, Catalog& catalog, CheckLog& log) {
    CatalogCheck(file, catalog, log).run();
}

}  // namespace stelvan::jet
