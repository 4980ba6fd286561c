#include "jet/tables/catalog.h"

#include <algorithm>
#include <map>

#include "jet/pages/fixed_pages.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/text.h"
#include "jet/tables/property_blob.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

namespace {

std::int32_t integerOf(const ValueView& value) {
    const auto* number = std::get_if<std::int32_t>(&value);
    return number == nullptr ? 0 : *number;
}

std::string textOf(const ValueView& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    return text == nullptr ? std::string() : std::string(*text);
}

// Runs through a system table, giving the values of the named columns.
template <typename Visit>
void readSystemTable(PageFile& file, std::shared_ptr<const TableDef> table,
                     std::initializer_list<std::string_view> names, Visit&& visit) {
    ColumnSet wanted;
    for (const std::string_view name : names) wanted.push_back(systemColumn(*table, name));
    RowReader reader(file, table, wanted);
    TableScan scan(file, *table);
    std::vector<ValueView> values(wanted.size());
    while (scan.next()) {
        reader.set(scan.row().bytes, scan.row().target.page);
        for (std::size_t i = 0; i < wanted.size(); ++i) values[i] = reader.value(wanted[i]);
        visit(scan.id(), values);
    }
}

}  // namespace

std::size_t systemColumn(const TableDef& table, std::string_view name) {
    const auto column = table.info.findColumn(name);
    if (!column)
        throwCorrupt(table.page, "a system table has no column " + std::string(name) + ".");
    return *column;
}

void Catalog::follow() {
    if (file_->version() == version_) return;
    forget();
    version_ = file_->version();
}

void Catalog::forget() {
    ++generation_;
    entries_.reset();
    tables_.clear();
    pages_.clear();
    definitions_.clear();
    relationships_.reset();
}

const std::vector<CatalogEntry>& Catalog::entries() {
    if (!entries_) loadEntries();
    return *entries_;
}

void Catalog::loadEntries() {
    std::vector<CatalogEntry> entries;
    readSystemTable(*file_, definitionAt(kObjectsPage), {"Id", "ParentId", "Name", "Type", "Flags"},
                    [&](RowId row, const std::vector<ValueView>& values) {
                        entries.push_back({integerOf(values[0]), integerOf(values[1]),
                                           textOf(values[2]), integerOf(values[3]),
                                           static_cast<std::uint32_t>(integerOf(values[4])), row});
                    });
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!entries[i].isTable()) continue;
        tables_.emplace(foldName(entries[i].name), i);
        pages_.emplace(entries[i].definitionPage(), i);
    }
    entries_ = std::move(entries);
}

const CatalogEntry* Catalog::findTable(std::string_view name) {
    const auto& all = entries();
    const auto found = tables_.find(foldName(name));
    return found == tables_.end() ? nullptr : &all[found->second];
}

const CatalogEntry* Catalog::findTableAt(PageNumber page) {
    const auto& all = entries();
    const auto found = pages_.find(page);
    return found == pages_.end() ? nullptr : &all[found->second];
}

std::shared_ptr<const TableDef> Catalog::definition(const CatalogEntry& table) {
    const PageNumber page = table.definitionPage();
    if (const auto found = definitions_.find(page);
        found != definitions_.end() && !found->second->info.name.empty()) {
        return found->second;
    }
    auto definition = std::make_shared<TableDef>(readTableDef(*file_, page));
    definition->info.name = table.name;
    definition->info.system = table.isSystem();
    readProperties(table, *definition);
    definitions_[page] = definition;
    return definition;
}

std::shared_ptr<const TableDef> Catalog::definitionAt(PageNumber page) {
    if (const auto found = definitions_.find(page); found != definitions_.end())
        return found->second;
    if (entries_) {
        if (const CatalogEntry* entry = findTableAt(page)) return definition(*entry);
    }
    auto definition = std::make_shared<TableDef>(readTableDef(*file_, page));
    definitions_[page] = definition;
    return definition;
}

void Catalog::readProperties(const CatalogEntry& table, TableDef& definition) {
    const auto objects = definitionAt(kObjectsPage);
    const std::size_t column = systemColumn(*objects, "LvProp");
    const auto located = locateRow(*file_, *objects, table.row);
    if (!located) throwCorrupt(table.row.page, "the catalogue's row of a table is gone.");
    RowReader reader(*file_, objects, {column});
    reader.set(located->bytes, located->target.page);
    const ValueView blob = reader.value(column);
    const auto* bytes = std::get_if<Bytes>(&blob);
    if (bytes == nullptr) return;
    atPage(table.row.page, [&] { applyProperties(*bytes, definition.info); });
}

const std::vector<RelationshipInfo>& Catalog::relationships() {
    if (!relationships_) loadRelationships();
    return *relationships_;
}

void Catalog::loadRelationships() {
    struct Pair {
        std::int32_t position = 0;
        std::string parent;
        std::string child;
    };
    std::vector<RelationshipInfo> found;
    std::vector<std::vector<Pair>> pairs;
    readSystemTable(*file_, definitionAt(kRelationshipsPage),
                    {"szRelationship", "grbit", "icolumn", "szObject", "szColumn",
                     "szReferencedObject", "szReferencedColumn"},
                    [&](RowId, const std::vector<ValueView>& values) {
                        const std::string name = textOf(values[0]);
                        auto at = std::ranges::find(found, name, &RelationshipInfo::name);
                        if (at == found.end()) {
                            const auto bits = static_cast<std::uint32_t>(integerOf(values[1]));
                            RelationshipInfo info;
                            info.name = name;
                            info.childTable = textOf(values[3]);
                            info.parentTable = textOf(values[5]);
                            info.enforced = (bits & relationship::kNotEnforced) == 0;
                            info.cascadeUpdates = (bits & relationship::kCascadeUpdates) != 0;
                            info.cascadeDeletes = (bits & relationship::kCascadeDeletes) != 0;
                            at = found.insert(found.end(), std::move(info));
                            pairs.emplace_back();
                        }
                        pairs[static_cast<std::size_t>(at - found.begin())].push_back(
                            {integerOf(values[2]), textOf(values[6]), textOf(values[4])});
                    });
    for (std::size_t i = 0; i < found.size(); ++i) {
        std::ranges::stable_sort(pairs[i], {}, &Pair::position);
        for (Pair& pair : pairs[i]) {
            found[i].parentColumns.push_back(std::move(pair.parent));
            found[i].childColumns.push_back(std::move(pair.child));
        }
    }
    relationships_ = std::move(found);
}

}  // namespace stelvan::jet
