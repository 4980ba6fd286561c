#include "jet/tables/object_registry.h"

#include <algorithm>
#include <limits>

#include "jet/pages/fixed_pages.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/text.h"
#include "jet/tables/catalog.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

namespace {

constexpr std::int32_t kTableRights = 0x000FFEFF;
constexpr std::int32_t kRelationshipAdminRights = 0x000F00FE;
constexpr std::int32_t kRelationshipGroupRights = 0x000FFFFF;
constexpr std::size_t kOwnSidSize = 2;

Blob bytesOf(const ValueView& value) {
    const auto* bytes = std::get_if<Bytes>(&value);
    return bytes == nullptr ? Blob() : Blob(bytes->begin(), bytes->end());
}

bool isObject(const ValueView& value, std::int32_t id) {
    const auto* number = std::get_if<std::int32_t>(&value);
    return number != nullptr && *number == id;
}

}  // namespace

ObjectRegistry::ObjectRegistry(SharedDatabase& file, DateTime now)
    : file_(&file), now_(now), ids_(readSecurityIds()) {}

// The owner of MSysDb is the user Admin; the group Users differs from it in one bit.
SecurityIds ObjectRegistry::readSecurityIds() {
    SecurityIds ids;
    Catalog& catalog = file_->catalog();
    const auto objects = catalog.definitionAt(kObjectsPage);
    const std::size_t owner = systemColumn(*objects, "Owner");
    for (const CatalogEntry& entry : catalog.entries()) {
        if (entry.id != catalogue::kDatabase) continue;
        const auto row = locateRow(file_->pages(), *objects, entry.row);
        if (!row) continue;
        RowReader reader(file_->pages(), objects, {owner});
        reader.set(row->bytes, row->target.page);
        ids.admin = bytesOf(reader.value(owner));
    }
    if (ids.admin.size() != kOwnSidSize)
        throwCorrupt(kObjectsPage, "it does not say who owns the database.");
    ids.users = {static_cast<std::uint8_t>(ids.admin[0] ^ 1), ids.admin[1]};

    const auto entries = catalog.definitionAt(kAccessEntriesPage);
    const ColumnSet wanted = {systemColumn(*entries, "ObjectId"), systemColumn(*entries, "SID")};
    RowReader reader(file_->pages(), entries, wanted);
    TableScan scan(file_->pages(), *entries);
    while (scan.next()) {
        reader.set(scan.row().bytes, scan.row().target.page);
        if (!isObject(reader.value(wanted[0]), catalogue::kTables)) continue;
        Blob who = bytesOf(reader.value(wanted[1]));
        if (who.size() > kOwnSidSize && std::ranges::count(ids.groups, who) == 0)
            ids.groups.push_back(std::move(who));
    }
    return ids;
}

bool ObjectRegistry::nameTaken(std::string_view name) {
    return std::ranges::any_of(file_->catalog().entries(), [&](const CatalogEntry& entry) {
        return entry.parent == catalogue::kTables && sameName(entry.name, name);
    });
}

void ObjectRegistry::addTable(const std::string& name, PageNumber definition,
                              const Blob& properties) {
    const auto id = static_cast<std::int32_t>(definition);
    addObject(id, catalogue::kTables, name, catalogue::kTypeTable, properties);
    addEntry(id, ids_.admin, kTableRights);
    addEntry(id, ids_.users, kTableRights);
    for (const Blob& group : ids_.groups) addEntry(id, group, kTableRights);
    file_->catalog().forget();
}

void ObjectRegistry::addRelationship(const std::string& name) {
    const std::int32_t id = nextRelationshipId();
    addObject(id, catalogue::kRelationships, name, catalogue::kTypeRelationship, {});
    addEntry(id, ids_.admin, kRelationshipAdminRights);
    addEntry(id, ids_.users, kRelationshipGroupRights);
    for (const Blob& group : ids_.groups) addEntry(id, group, kRelationshipGroupRights);
    file_->catalog().forget();
}

std::int32_t ObjectRegistry::nextRelationshipId() {
    std::int32_t next = std::numeric_limits<std::int32_t>::min();
    for (const CatalogEntry& entry : file_->catalog().entries()) {
        if (entry.id < 0 && entry.id >= next) next = entry.id + 1;
    }
    return next;
}

void ObjectRegistry::addObject(std::int32_t id, std::int32_t parent, const std::string& name,
                               std::int32_t type, const Blob& properties) {
    const auto objects = file_->catalog().definitionAt(kObjectsPage);
    const auto column = [&](std::string_view columnName) {
        return systemColumn(*objects, columnName);
    };
    std::vector<ColumnValue> values = {{column("Id"), id},
                                       {column("ParentId"), parent},
                                       {column("Name"), name},
                                       {column("Type"), type},
                                       {column("DateCreate"), now_},
                                       {column("DateUpdate"), now_},
                                       {column("Owner"), ids_.admin},
                                       {column("Flags"), std::int32_t{0}}};
    if (!properties.empty()) values.emplace_back(column("LvProp"), properties);
    file_->writer().insert(objects, values);
}

void ObjectRegistry::addEntry(std::int32_t object, const Blob& who, std::int32_t rights) {
    const auto entries = file_->catalog().definitionAt(kAccessEntriesPage);
    const std::vector<ColumnValue> values = {{systemColumn(*entries, "ObjectId"), object},
                                             {systemColumn(*entries, "SID"), who},
                                             {systemColumn(*entries, "ACM"), rights},
                                             {systemColumn(*entries, "FInheritable"), false}};
    file_->writer().insert(entries, values);
}

void ObjectRegistry::remove(const CatalogEntry& entry) {
    const std::int32_t id = entry.id;
    const RowId row = entry.row;
    file_->writer().erase(file_->catalog().definitionAt(kObjectsPage), row);
    removeEntries(id);
    file_->catalog().forget();
}

void ObjectRegistry::removeEntries(std::int32_t object) {
    const auto entries = file_->catalog().definitionAt(kAccessEntriesPage);
    const std::size_t column = systemColumn(*entries, "ObjectId");
    std::vector<RowId> rows;
    RowReader reader(file_->pages(), entries, {column});
    TableScan scan(file_->pages(), *entries);
    while (scan.next()) {
        reader.set(scan.row().bytes, scan.row().target.page);
        if (isObject(reader.value(column), object)) rows.push_back(scan.id());
    }
    for (const RowId row : rows) file_->writer().erase(entries, row);
}

}  // namespace stelvan::jet
