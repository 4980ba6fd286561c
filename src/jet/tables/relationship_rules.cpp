#include "jet/tables/relationship_rules.h"

#include <algorithm>

#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "jet/rows/conversion.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

namespace {

constexpr std::uint8_t kCascade = 1;
constexpr std::uint8_t kSetNull = 2;

bool anyNull(const LinkKey& key) {
    return std::ranges::any_of(key, [](const Value& value) { return isNull(value); });
}

}  // namespace

RelationshipRules::OtherSide RelationshipRules::otherSide(const RelationshipLink& link) {
    auto table = catalog_->definitionAt(link.otherTable);
    for (std::size_t i = 0; i < table->logical.size(); ++i) {
        const LogicalIndexDef& logical = table->logical[i];
        if (logical.kind != logical_index::kForeign ||
            static_cast<std::int32_t>(logical.number) != link.partner) {
            continue;
        }
        RelationshipLink other = linkAt(*table, i);
        if (other.columns.size() != link.columns.size()) break;
        return {std::move(table), std::move(other)};
    }
    throwCorrupt(link.otherTable, "a relationship has no other side.");
}

std::string RelationshipRules::nameOf(PageNumber table) {
    const CatalogEntry* entry = catalog_->findTableAt(table);
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
    TreeCursor entries = IndexTree(*file_, tree.root, table.page).withPrefix(bytes.bytes);
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

Cascade RelationshipRules::parentTouched(const TableDef& parent, const TouchedLink& touched) {
    if (anyNull(touched.oldKey)) return {};
    const RelationshipLink& link = touched.link;
    const bool erased = touched.newKey.empty();
    if (erased && (link.cascadeDeletes == kCascade || link.cascadeDeletes == kSetNull))
        return parentErased(touched);
    if (!erased && link.cascadeUpdates == kCascade) return parentChanged(touched);
    parents_.push_back({parent.page, link.logical, touched.oldKey});
    return {};
}

Cascade RelationshipRules::parentErased(const TouchedLink& touched) {
    const OtherSide child = otherSide(touched.link);
    Cascade cascade;
    cascade.table = child.table;
    cascade.rows = rowsWith(*child.table, child.link, touched.oldKey, false);
    cascade.erase = touched.link.cascadeDeletes == kCascade;
    cascade.mayBeGone = true;
    for (const std::size_t column : child.link.columns) cascade.values.emplace_back(column, Null{});
    return cascade;
}

Cascade RelationshipRules::parentChanged(const TouchedLink& touched) {
    const OtherSide child = otherSide(touched.link);
    Cascade cascade;
    cascade.table = child.table;
    cascade.rows = rowsWith(*child.table, child.link, touched.oldKey, false);
    for (std::size_t i = 0; i < touched.newKey.size(); ++i)
        cascade.values.emplace_back(child.link.columns[i], touched.newKey[i]);
    return cascade;
}

void RelationshipRules::judge() {
    if (!children_.empty() || !parents_.empty()) catalog_->follow();
    for (const WrittenChild& child : children_) judgeChild(child);
    for (const LostParent& parent : parents_) judgeParent(parent);
}

void RelationshipRules::forget() {
    children_.clear();
    parents_.clear();
}

void RelationshipRules::judgeChild(const WrittenChild& child) {
    const auto table = catalog_->definitionAt(child.table);
    const RelationshipLink link = linkAt(*table, child.logical);
    const auto row = locateRow(*file_, *table, child.row);
    if (!row) return;
    RowReader reader(*file_, table, link.columns);
    reader.set(row->bytes, row->target.page);
    LinkKey key;
    for (const std::size_t column : link.columns) key.push_back(toValue(reader.value(column)));
    if (anyNull(key)) return;
    const OtherSide parent = otherSide(link);
    if (!rowsWith(*parent.table, parent.link, key, true).empty()) return;
    throw Error::of(ErrorKind::MissingParent, nameOf(parent.table->page));
}

void RelationshipRules::judgeParent(const LostParent& lost) {
    const auto table = catalog_->definitionAt(lost.table);
    const RelationshipLink link = linkAt(*table, lost.logical);
    if (!rowsWith(*table, link, lost.key, true).empty()) return;
    const OtherSide child = otherSide(link);
    if (rowsWith(*child.table, child.link, lost.key, true).empty()) return;
    throw Error::of(ErrorKind::HasChildren, nameOf(child.table->page));
}

}  // namespace stelvan::jet
