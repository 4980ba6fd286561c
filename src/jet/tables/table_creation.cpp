#include <algorithm>
#include <set>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_page.h"
#include "jet/index/index_tree.h"
#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/map_rows.h"
#include "jet/pages/page_allocation.h"
#include "jet/pages/record_pointer.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/definition_writer.h"
#include "jet/tables/object_registry.h"
#include "jet/tables/property_blob.h"
#include "jet/tables/schema_change.h"
#include "jet/tables/stored_table.h"
#include "jet/tables/table.h"
#include "jet/tables/table_layout.h"
#include "jet/tables/table_scan.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

namespace {

// Pages on which the maps of tables stand, the first one of all first.
std::vector<PageNumber> usageMapPages(SharedDatabase& file) {
    std::set<PageNumber> pages = {kFirstUsageMapPage};
    for (const CatalogEntry& entry : file.catalog().entries()) {
        if (!entry.isTable()) continue;
        const PageNumber page =
            pointerAt(file.pages().read(entry.definitionPage()), definition::kOwnedMap).page;
        if (page != kGlobalMapPage && page < file.pages().pageCount()) pages.insert(page);
    }
    return {pages.begin(), pages.end()};
}

void giveMaps(PageFile& file, MapRows& maps, TableDef& table) {
    table.ownedMap = maps.add();
    table.freeMap = maps.add();
    for (std::size_t i = 0; i < table.storage.size(); ++i) {
        if (!isLongValue(table.info.columns[i].type)) continue;
        table.storage[i].ownedMap = maps.add();
        table.storage[i].freeMap = maps.add();
    }
    for (RealIndexDef& tree : table.trees) {
        tree.map = maps.add();
        tree.root = OwnedPages(file, tree.map).allocate();
        IndexTree::makeRoot(file.edit(tree.root), table.page);
    }
}

}  // namespace

void createTable(SharedDatabase& file, const TableSpec& spec, DateTime now) {
    TableDef table = layOut(spec);
    ObjectRegistry objects(file, now);
    if (objects.nameTaken(spec.name)) {
        throw Error::of(ErrorKind::TableExists, spec.name);
    }
    const Blob properties = makeProperties(table.info);

    WriteScope step(file.sharedPages());
    PageFile& pages = file.pages();
    table.page = FreePages(pages).take();
    MapRows maps(pages, usageMapPages(file));
    giveMaps(pages, maps, table);
    writeDefinition(pages, {table.page}, makeDefinition(table, BlockOrder::ByNumber).join());
    objects.addTable(spec.name, table.page, properties);
    step.commit();
}

namespace {

std::vector<PageNumber> membersOf(PageFile& file, RecordPointer map) {
    std::vector<PageNumber> pages;
    if (map.none()) return pages;
    const UsageMap members(file, map);
    for (auto page = members.next(0); page; page = members.next(*page + 1)) pages.push_back(*page);
    return pages;
}

void requireIndexPage(PageFile& file, PageNumber number, PageNumber owner) {
    const PageBytes page = file.read(number);
    const bool index = page[0] == static_cast<std::uint8_t>(PageType::IndexNode) ||
                       page[0] == static_cast<std::uint8_t>(PageType::IndexLeaf);
    if (!index || u32At(page, index_page::kDefinition) != owner) {
        throwCorrupt(number, "it does not belong to the index that lists it.");
    }
}

/// What a table owns, checked to be its own before anything is given back.
struct Belongings {
    std::vector<PageNumber> dataPages;
    std::vector<PageNumber> indexPages;
    std::vector<PageNumber> definitionPages;
    std::vector<RecordPointer> maps;
};

Belongings belongingsOf(PageFile& file, const TableDef& table) {
    Belongings all;
    const auto takeData = [&](RecordPointer owned, RecordPointer free, std::uint32_t owner) {
        for (const PageNumber page : membersOf(file, owned)) {
            static_cast<void>(readOwnedPage(file, page, owner));
            all.dataPages.push_back(page);
        }
        for (const RecordPointer map : {owned, free}) {
            if (!map.none()) all.maps.push_back(map);
        }
    };
    takeData(table.ownedMap, table.freeMap, table.page);
    for (std::size_t i = 0; i < table.storage.size(); ++i) {
        if (!isLongValue(table.info.columns[i].type)) continue;
        takeData(table.storage[i].ownedMap, table.storage[i].freeMap, data_page::kLongValueOwner);
    }
    for (const RealIndexDef& tree : table.trees) {
        for (const PageNumber page : membersOf(file, tree.map)) {
            requireIndexPage(file, page, table.page);
            all.indexPages.push_back(page);
        }
        all.maps.push_back(tree.map);
    }
    all.definitionPages = readDefinitionBytes(file, table.page).pages;
    return all;
}

void refuseRelated(SharedDatabase& file, const TableDef& table) {
    for (const RelationshipInfo& relationship : file.catalog().relationships()) {
        if (relationship.parentTable != table.info.name &&
            relationship.childTable != table.info.name)
            continue;
        const std::string& other = relationship.parentTable == table.info.name
                                       ? relationship.childTable
                                       : relationship.parentTable;
        throw Error(ErrorKind::HasChildren, "The table '" + table.info.name +
                                                "' takes part in the relationship '" +
                                                relationship.name + "'.")
            .about(other);
    }
}

}  // namespace

void dropTable(SharedDatabase& file, std::string_view name) {
    const CatalogEntry* found = file.catalog().findTable(name);
    if (found == nullptr) throw Error::of(ErrorKind::NoSuchTable, std::string(name));
    const CatalogEntry entry = *found;
    if (entry.isSystem())
        throw Error(ErrorKind::Misuse, "'" + entry.name + "' is a system table and stays.");
    const auto table = file.catalog().definition(entry);
    refuseRelated(file, *table);
    ObjectRegistry objects(file, {});
    const Belongings all = belongingsOf(file.pages(), *table);

    WriteScope step(file.sharedPages());
    FreePages free(file.pages());
    objects.remove(entry);
    for (const RecordPointer map : all.maps) MapRows::remove(file.pages(), map);
    for (const PageNumber page : all.dataPages) free.give(page, PageType::FreedData);
    for (const PageNumber page : all.indexPages) free.give(page, std::nullopt);
    for (const PageNumber page : all.definitionPages) free.give(page, PageType::FreedDefinition);
    file.catalog().forget();
    step.commit();
}

}  // namespace stelvan::jet
