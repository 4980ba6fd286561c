#include "jet/tables/database_creation.h"

#include <algorithm>
#include <bit>
#include <memory>

#include "jet/disk/commit_slots.h"
#include "jet/disk/memory_pages.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_tree.h"
#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/header.h"
#include "jet/pages/page_allocation.h"
#include "jet/pages/record_pointer.h"
#include "jet/pages/usage_map.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"
#include "jet/tables/catalog.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/definition_writer.h"
#include "jet/tables/shared_database.h"

namespace stelvan::jet {

namespace {

// The disguise of the security ids depends on the creation date in an unknown way: these belong
// together.
constexpr std::uint64_t kCreatedBits = 0x40E4AB3E3BD3853E;  // 2015-11-21 22:40
const Blob kEngineSid = {0x65, 0x89};
const Blob kAdminSid = {0x64, 0x8B};
const Blob kUsersSid = {0x65, 0x8B};
const Blob kCreatorSid = {0x65, 0x8E};

constexpr std::uint32_t kEngineBuild = 9756;
constexpr std::uint16_t kCodePage = 1252;
constexpr std::uint32_t kTailWord = 0x0654;
constexpr std::uint16_t kIdleSlot = 0x0100;
constexpr PageNumber kPagesBeforeRows = 14;

/// Columns of the system tables, by ascending number.
struct SystemColumn {
    const char* name;
    ColumnType type;
    std::uint8_t extraFlags = 0;
};
struct SystemIndex {
    const char* name;
    std::uint32_t number;
    std::uint32_t real;
    bool primary = false;
};
struct SystemTree {
    std::vector<std::size_t> columns;
    std::uint8_t flags;
};
struct SystemTable {
    PageNumber page;
    std::uint8_t firstMap;  // row on the usage-map page
    PageNumber firstRoot;
    std::vector<SystemColumn> columns;
    std::vector<SystemTree> trees;
    std::vector<SystemIndex> indexes;
};

const std::vector<SystemTable>& systemTables() {
    using enum ColumnType;
    constexpr std::uint8_t kSid = column_flag::kSecurityId;
    constexpr std::uint8_t kKey = real_index::kAlways | real_index::kUnique;
    constexpr std::uint8_t kNoNulls = real_index::kAlways | real_index::kRequired;
    constexpr std::uint8_t kSkipNulls = real_index::kAlways | real_index::kIgnoreNulls;
    static const std::vector<SystemTable> tables = {
        {kObjectsPage,
         0,
         7,
         {{"Id", Long},
          {"ParentId", Long},
          {"Name", Text},
          {"Type", Integer},
          {"DateCreate", ColumnType::DateTime},
          {"DateUpdate", ColumnType::DateTime},
          {"Owner", Binary, kSid},
          {"Flags", Long},
          {"Database", Memo},
          {"Connect", Memo},
          {"ForeignName", Text},
          {"RmtInfoShort", Binary},
          {"RmtInfoLong", Ole},
          {"Lv", Ole},
          {"LvProp", Ole},
          {"LvModule", Ole},
          {"LvExtra", Ole}},
         {{{1, 2}, kKey}, {{0}, kKey}},
         {{"ParentIdName", 0, 0}, {"Id", 1, 1, true}}},
        {kAccessEntriesPage,
         18,
         9,
         {{"ObjectId", Long}, {"SID", Binary, kSid}, {"ACM", Long}, {"FInheritable", Boolean}},
         {{{0}, kNoNulls}},
         {{"ObjectId", 0, 0}}},
        {kQueriesPage,
         21,
         10,
         {{"ObjectId", Long},
          {"Attribute", Byte},
          {"Order", Binary},
          {"Name1", Text},
          {"Name2", Text},
          {"Expression", Memo},
          {"Flag", Integer},
          {"LvExtra", Long}},
         {{{0, 1, 2}, kKey}},
         {{"ObjectIdAttribute", 0, 0, true}}},
        {kRelationshipsPage,
         26,
         11,
         {{"szRelationship", Text},
          {"grbit", Long},
          {"ccolumn", Long},
          {"icolumn", Long},
          {"szObject", Text},
          {"szColumn", Text},
          {"szReferencedObject", Text},
          {"szReferencedColumn", Text}},
         {{{0}, kSkipNulls}, {{4}, kSkipNulls}, {{6}, kSkipNulls}},
         {{"szRelationship", 0, 0}, {"szObject", 1, 1}, {"szReferencedObject", 2, 2}}}};
    return tables;
}

// Maps stand in this order: rows of the table, long values by column, trees.
class MapPlaces {
public:
    explicit MapPlaces(std::uint8_t first) : next_(first) {}
    RecordPointer take() { return {kFirstUsageMapPage, next_++}; }

private:
    std::uint8_t next_;
};

void addColumn(TableDef& table, const SystemColumn& column) {
    ColumnInfo info;
    info.name = column.name;
    info.type = column.type;
    info.number = static_cast<std::uint16_t>(table.info.columns.size());
    const auto natural = naturalSize(column.type);
    info.fixedLength = natural.has_value();
    constexpr std::uint16_t kVariableLength = 510;
    info.length = natural                    ? *natural
                  : isLongValue(column.type) ? std::uint16_t{0}
                                             : kVariableLength;
    ColumnStorage storage;
    storage.flags = static_cast<std::uint8_t>(column_flag::kUpdatable | column_flag::kSystem |
                                              column.extraFlags);
    if (natural) {
        storage.flags |= column_flag::kFixed;
        if (column.type != ColumnType::Boolean)
            storage.fixedOffset = static_cast<std::uint16_t>(table.fixedSize);
        storage.size = column.type == ColumnType::Boolean ? std::uint16_t{0} : *natural;
        table.fixedSize += storage.size;
    } else {
        storage.variableIndex = table.variableColumns++;
    }
    table.info.columns.push_back(std::move(info));
    table.storage.push_back(storage);
}

TableDef systemDefinition(const SystemTable& spec) {
    TableDef table;
    table.page = spec.page;
    MapPlaces maps(spec.firstMap);
    table.ownedMap = maps.take();
    table.freeMap = maps.take();
    for (const SystemColumn& column : spec.columns) addColumn(table, column);
    for (std::size_t i = 0; i < table.storage.size(); ++i) {
        if (!isLongValue(table.info.columns[i].type)) continue;
        table.storage[i].ownedMap = maps.take();
        table.storage[i].freeMap = maps.take();
    }
    table.maxColumns = static_cast<std::uint16_t>(table.info.columns.size());
    PageNumber root = spec.firstRoot;
    for (const SystemTree& tree : spec.trees) {
        RealIndexDef index;
        for (const std::size_t column : tree.columns) index.columns.push_back({column, true});
        index.map = maps.take();
        index.root = root++;
        index.flags = tree.flags;
        table.trees.push_back(std::move(index));
    }
    for (const SystemIndex& index : spec.indexes) {
        LogicalIndexDef logical;
        logical.number = index.number;
        logical.real = index.real;
        logical.kind = index.primary ? logical_index::kPrimary : logical_index::kPlain;
        table.logical.push_back(logical);
        IndexInfo info;
        info.name = index.name;
        table.info.indexes.push_back(std::move(info));
    }
    return table;
}

void writeHeader(WritablePageBytes page) {
    constexpr std::string_view kName = "Standard Jet DB";
    constexpr std::string_view kVersionText = "4.0";
    const DateTime created{std::bit_cast<double>(kCreatedBits)};
    std::ranges::fill(page, std::uint8_t{0});
    page[1] = 1;
    std::ranges::copy(kName, page.begin() + header::kEngineName);
    putU32(page, header::kVersion, 1);
    putPointer(page, header::kGlobalMap, {kGlobalMapPage, kGlobalMapRow});
    putPointer(page, header::kSecondMap, {kGlobalMapPage, kGlobalMapRow + 1});
    putU32(page, header::kObjects, kObjectsPage);
    putU32(page, header::kAccessEntries, kAccessEntriesPage);
    putU32(page, header::kQueries, kQueriesPage);
    putU32(page, header::kRelationships, kRelationshipsPage);
    putU16(page, header::kCodePage, kCodePage);
    for (std::size_t at = 0; at < header::kPasswordSize; at += 4) {
        putU32(page, header::kPassword + at, passwordMask(created.days));
    }
    putU32(page, header::kEngineBuild, kEngineBuild);
    putU16(page, header::kSortLocale, SortOrder{}.locale);
    storeAt<double>(page, header::kCreated, created.days);
    maskHeader(page);
    putU32(page, header::kTail, kTailWord);
    std::ranges::copy(kVersionText, page.begin() + header::kTailText);
    for (std::size_t slot = 0; slot < commit_slots::kCount; ++slot) {
        putU16(page, commit_slots::kOffset + 2 * slot, slot == 0 ? kIdleSlot + 1 : kIdleSlot);
    }
}

// All pages that are there are used; those that will follow are free.
void writeGlobalMaps(WritablePageBytes page) {
    DataPageEditor::format(page, 1);
    DataPageEditor editor(kGlobalMapPage, page);
    Blob map = UsageMapEditor::emptyMap();
    for (PageNumber bit = kPagesBeforeRows; bit < (map.size() - usage_map::kBits) * 8; ++bit) {
        map[usage_map::kBits + bit / 8] |= static_cast<std::uint8_t>(1u << (bit % 8));
    }
    static_cast<void>(editor.append(map));
    static_cast<void>(editor.append(UsageMapEditor::emptyMap()));
}

void writeSystemTables(PageFile& file) {
    constexpr std::size_t kMaps = 31;
    DataPageEditor::format(file.edit(kFirstUsageMapPage), 0);
    DataPageEditor maps(kFirstUsageMapPage, file.edit(kFirstUsageMapPage));
    for (std::size_t i = 0; i < kMaps; ++i)
        static_cast<void>(maps.append(UsageMapEditor::emptyMap()));
    FreePages free(file);
    for (const SystemTable& spec : systemTables()) {
        const TableDef table = systemDefinition(spec);
        writeDefinition(file, {table.page}, makeDefinition(table, BlockOrder::ByName).join());
        for (const RealIndexDef& tree : table.trees) {
            IndexTree::makeRoot(file.edit(tree.root), table.page);
            UsageMapEditor(file, tree.map).add(tree.root, free);
        }
    }
}

struct FirstObject {
    std::int32_t id;
    std::int32_t parent;
    const char* name;
    std::int32_t type;
    const Blob& owner;
};

void addObjects(SharedDatabase& file, DateTime created) {
    using namespace catalogue;
    const FirstObject objects[] = {
        {kTables, kRoot, "Tables", kTypeContainer, kEngineSid},
        {kDatabases, kRoot, "Databases", kTypeContainer, kEngineSid},
        {kRelationships, kRoot, "Relationships", kTypeContainer, kEngineSid},
        {kDatabase, kDatabases, "MSysDb", kTypeDatabase, kAdminSid},
        {kObjectsPage, kTables, "MSysObjects", kTypeTable, kEngineSid},
        {kAccessEntriesPage, kTables, "MSysACEs", kTypeTable, kEngineSid},
        {kQueriesPage, kTables, "MSysQueries", kTypeTable, kEngineSid},
        {kRelationshipsPage, kTables, "MSysRelationships", kTypeTable, kEngineSid}};
    const auto table = file.catalog().definitionAt(kObjectsPage);
    for (const FirstObject& object : objects) {
        const std::vector<ColumnValue> values = {{0, object.id},
                                                 {1, object.parent},
                                                 {2, std::string(object.name)},
                                                 {3, object.type},
                                                 {4, created},
                                                 {5, created},
                                                 {6, object.owner},
                                                 {7, static_cast<std::int32_t>(kSystemObject)}};
        file.writer().insert(table, values);
    }
}

struct FirstEntry {
    std::int32_t object;
    const Blob& who;
    std::int32_t rights;
    bool inheritable;
};

void addAccessEntries(SharedDatabase& file) {
    using namespace catalogue;
    const FirstEntry entries[] = {{kObjectsPage, kAdminSid, 0x00060000, false},
                                  {kAccessEntriesPage, kAdminSid, 0x00060000, false},
                                  {kQueriesPage, kAdminSid, 0x00060000, false},
                                  {kRelationshipsPage, kAdminSid, 0x000E0000, false},
                                  {kTables, kCreatorSid, 0x000F00FE, true},
                                  {kTables, kAdminSid, 0x00060001, false},
                                  {kRelationships, kCreatorSid, 0x000F00FE, true},
                                  {kRelationships, kAdminSid, 0x00060001, false},
                                  {kDatabases, kAdminSid, 0x00060000, false},
                                  {kDatabase, kAdminSid, 0x0006000E, false},
                                  {kDatabase, kUsersSid, 0x0000000E, false},
                                  {kQueriesPage, kUsersSid, 0x00000014, false},
                                  {kRelationshipsPage, kUsersSid, 0x00000014, false},
                                  {kObjectsPage, kUsersSid, 0x00000014, false},
                                  {kTables, kUsersSid, 0x000FFEFF, true},
                                  {kRelationships, kUsersSid, 0x000FFFFF, true}};
    const auto table = file.catalog().definitionAt(kAccessEntriesPage);
    for (const FirstEntry& entry : entries) {
        const std::vector<ColumnValue> values = {
            {0, entry.object}, {1, entry.who}, {2, entry.rights}, {3, entry.inheritable}};
        file.writer().insert(table, values);
    }
}

}  // namespace

std::vector<std::uint8_t> makeEmptyDatabase(DateTime created) {
    const auto pages = std::make_shared<MemoryPages>(kPagesBeforeRows);
    const auto file = std::make_shared<SharedDatabase>(pages);
    UnitOfWork unit(file);
    writeHeader(pages->edit(0));
    writeGlobalMaps(pages->edit(kGlobalMapPage));
    writeSystemTables(*pages);
    addObjects(*file, created);
    addAccessEntries(*file);
    unit.commit();
    return pages->file();
}

}  // namespace stelvan::jet
