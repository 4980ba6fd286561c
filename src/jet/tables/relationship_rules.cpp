#include "jet/tables/relationship_rules.h"

#include <algorithm>

#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/rows/conversion.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/shared_database.h"
#include "jet/tables/table_scan.h"
#include "jet/tables/table_writer.h"

namespace stelvan::jet {

namespace {

constexpr std::uint8_t kCascade = 1;
constexpr std::uint8_t kSetNull = 2;

RelationshipLink makeLink(const TableDef& table, std::size_t position) {
    const LogicalIndexDef& logical = table.logical[position];
    RelationshipLink link;
    link.parent = logical.side == logical_index::kParentSide;
    link.logical = position;
    link.otherTable = logical.otherTable;
    link.partner = logical.partner;
    link.cascadeUpdates = logical.cascadeUpdates;
    link.cascadeDeletes = logical.cascadeDeletes;
    for (const IndexColumn& part : table.trees[logical.real].columns)
        link.columns.push_back(part.column);
    return link;
}

bool anyNull(const LinkKey& key) {
    return std::ranges::any_of(key, [](const Value& value) { return isNull(value); });
}

}  // namespace

std::vector<RelationshipLink> linksOf(const TableDef& table) {
    std::vector<RelationshipLink> links;
    for (std::size_t i = 0; i < table.logical.size(); ++i) {
        if (table.logical[i].kind == logical_index::kForeign) links.push_back(makeLink(table, i));
    }
    return links;
}

RelationshipRules::OtherSide RelationshipRules::otherSide(const RelationshipLink& link) {
    auto table = file_->catalog().definitionAt(link.otherTable);
    for (std::size_t i = 0; i < table->logical.size(); ++i) {
        const LogicalIndexDef& logical = table->logical[i];
        if (logical.kind != logical_index::kForeign ||
            static_cast<std::int32_t>(logical.number) != link.partner) {
            continue;
        }
        RelationshipLink other = makeLink(*table, i);
        if (other.columns.size() != link.columns.size()) break;
        return {std::move(table), std::move(other)};
    }
    throwCorrupt(link.otherTable, "a relationship has no other side.");
}

std::string RelationshipRules::nameOf(PageNumber table) {
    const CatalogEntry* entry = file_->catalog().findTableAt(table);
    return entry == nullptr ? std::string() : entry->name;
}

std::vector<RowId> RelationshipRules::rowsWith(const TableDef& table, const RelationshipLink& link,
                                               const LinkKey& key, bool firstOnly) {
    const RealIndexDef& tree = table.trees[table.logical[link.logical].real];
    LinkKey converted;
    for (std::size_t i = 0; i < key.size(); ++i) {
        converted.push_back(convertTo(table.info.columns[link.columns[i]], key[i]));
    }
    std::vector<ValueView> values;
    for (const Value& value : converted) values.push_back(toView(value));
    IndexKey bytes;
    KeyEncoder(table.info.columns, tree.columns).encode(values, bytes);
    std::vector<RowId> rows;
    TreeCursor entries = IndexTree(file_->pages(), tree.root, table.page).withPrefix(bytes.bytes);
    while (entries.next()) {
        rows.push_back(entries.rowId());
        if (firstOnly) break;
    }
    return rows;
}

void RelationshipRules::childWritten(const TableDef& child, const RelationshipLink& link,
                                     RowId row) {
    children_.insert({child.page, link.logical, row});
}

void RelationshipRules::parentErased(const TableDef& parent, const RelationshipLink& link,
                                     LinkKey key) {
    if (anyNull(key)) return;
    if (link.cascadeDeletes != kCascade && link.cascadeDeletes != kSetNull) {
        parents_.push_back({parent.page, link.logical, std::move(key)});
        return;
    }
    const OtherSide child = otherSide(link);
    TableWriter& writer = file_->writer(child.table);
    std::vector<ColumnValue> nulls;
    for (const std::size_t column : child.link.columns) nulls.emplace_back(column, Null{});
    for (const RowId row : rowsWith(*child.table, child.link, key, false)) {
        // The row may have gone already, by way of another relationship.
        if (!locateRow(file_->pages(), *child.table, row)) continue;
        if (link.cascadeDeletes == kCascade) {
            writer.erase(row);
        } else {
            writer.update(row, nulls);
        }
    }
}

void RelationshipRules::parentChanged(const TableDef& parent, const RelationshipLink& link,
                                      LinkKey oldKey, const LinkKey& newKey) {
    if (anyNull(oldKey)) return;
    if (link.cascadeUpdates != kCascade) {
        parents_.push_back({parent.page, link.logical, std::move(oldKey)});
        return;
    }
    const OtherSide child = otherSide(link);
    TableWriter& writer = file_->writer(child.table);
    std::vector<ColumnValue> values;
    for (std::size_t i = 0; i < newKey.size(); ++i)
        values.emplace_back(child.link.columns[i], newKey[i]);
    for (const RowId row : rowsWith(*child.table, child.link, oldKey, false))
        writer.update(row, values);
}

void RelationshipRules::judge() {
    for (const WrittenChild& child : children_) judgeChild(child);
    for (const LostParent& parent : parents_) judgeParent(parent);
}

void RelationshipRules::forget() {
    children_.clear();
    parents_.clear();
}

void RelationshipRules::judgeChild(const WrittenChild& child) {
    const auto table = file_->catalog().definitionAt(child.table);
    const RelationshipLink link = makeLink(*table, child.logical);
    const auto row = locateRow(file_->pages(), *table, child.row);
    if (!row) return;
    RowReader reader(file_->pages(), table, link.columns);
    reader.set(row->bytes, row->target.page);
    LinkKey key;
    for (const std::size_t column : link.columns) key.push_back(toValue(reader.value(column)));
    if (anyNull(key)) return;
    const OtherSide parent = otherSide(link);
    if (!rowsWith(*parent.table, parent.link, key, true).empty()) return;
    const std::string name = nameOf(parent.table->page);
    Error error(
        ErrorKind::MissingParent,
        "You cannot add or change a record because a related record is required in table '" + name +
            "'.");
    throw error.about(name);
}

void RelationshipRules::judgeParent(const LostParent& lost) {
    const auto table = file_->catalog().definitionAt(lost.table);
    const RelationshipLink link = makeLink(*table, lost.logical);
    if (!rowsWith(*table, link, lost.key, true).empty()) return;
    const OtherSide child = otherSide(link);
    if (rowsWith(*child.table, child.link, lost.key, true).empty()) return;
    const std::string name = nameOf(child.table->page);
    Error error(ErrorKind::HasChildren, "The record cannot be deleted or changed because table '" +
                                            name + "' includes related records.");
    throw error.about(name);
}

}  // namespace stelvan::jet
