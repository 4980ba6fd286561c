#include "jet/tables/table_def.h"

#include <algorithm>

#include "jet/rows/text.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

namespace {

using namespace definition;

// More than 255 columns and 32 indexes with the longest names can fill.
constexpr std::size_t kMaxChain = 64;
constexpr std::size_t kMaxIndexBlocks = 256;

// Reads one structure after the other.
class Walker {
public:
    Walker(Bytes bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    Bytes take(std::size_t size) {
        const Bytes part = bytesAt(bytes_, at_, size);
        at_ += size;
        return part;
    }
    std::string takeName() {
        const std::size_t size = u16At(take(2), 0);
        return decodeText(take(size));
    }

private:
    Bytes bytes_;
    std::size_t at_;
};

[[noreturn]] void throwBad(const std::string& what) {
    throw Error(ErrorKind::Corrupt, what);
}

bool isKnown(std::uint8_t code) {
    return (code >= 1 && code <= 12) || (code >= 15 && code <= 17);
}

// The block's sort order bytes hold the precision and scale of a Numeric column.
ColumnInfo readColumnInfo(Bytes block) {
    const std::uint8_t code = u8At(block, column_block::kType);
    const std::uint8_t flags = u8At(block, column_block::kFlags);
    ColumnInfo info;
    info.type = isKnown(code) ? static_cast<ColumnType>(code) : ColumnType::Binary;
    info.number = u16At(block, column_block::kNumber);
    info.length = u16At(block, column_block::kLength);
    info.fixedLength = (flags & column_flag::kFixed) != 0;
    info.autoNumber = (flags & column_flag::kAutoNumber) != 0 && info.type == ColumnType::Long;
    info.compressed = (u8At(block, column_block::kExtraFlags) & column_block::kCompressed) != 0;
    if (info.type == ColumnType::Numeric) {
        info.precision = u8At(block, column_block::kPrecision);
        info.scale = u8At(block, column_block::kScale);
    } else {
        info.order = {u16At(block, column_block::kLocale), u8At(block, column_block::kSortVersion)};
    }
    return info;
}

ColumnStorage readStorage(Bytes block, const ColumnInfo& info) {
    ColumnStorage storage;
    storage.flags = u8At(block, column_block::kFlags);
    if (info.fixedLength) {
        storage.fixedOffset = u16At(block, column_block::kFixedOffset);
        if (info.type != ColumnType::Boolean)
            storage.size = naturalSize(info.type).value_or(info.length);
    } else {
        storage.variableIndex = u16At(block, column_block::kVariableIndex);
    }
    return storage;
}

void checkColumn(const TableDef& table, const ColumnInfo& info, const ColumnStorage& storage) {
    if (info.number >= table.maxColumns) throwBad("column number beyond the number of columns.");
    if (!info.fixedLength && info.type != ColumnType::Boolean &&
        storage.variableIndex >= table.variableColumns) {
        throwBad("variable column beyond the number of variable columns.");
    }
    if (info.fixedLength &&
        static_cast<std::size_t>(storage.fixedOffset) + storage.size > kPageSize) {
        throwBad("fixed column beyond the end of any row.");
    }
    if (info.type == ColumnType::Numeric && info.scale > 28)
        throwBad("decimal places out of range.");
}

// Positions follow the column numbers, whatever the order of the blocks.
void sortByNumber(TableDef& table) {
    std::vector<std::size_t> order(table.info.columns.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::ranges::sort(order, {}, [&](std::size_t i) { return table.info.columns[i].number; });
    std::vector<ColumnInfo> columns;
    std::vector<ColumnStorage> storage;
    for (const std::size_t i : order) {
        if (!columns.empty() && columns.back().number == table.info.columns[i].number) {
            throwBad("two columns with one number.");
        }
        columns.push_back(std::move(table.info.columns[i]));
        storage.push_back(table.storage[i]);
    }
    table.info.columns = std::move(columns);
    table.storage = std::move(storage);
}

void readColumns(Walker& walker, std::size_t count, TableDef& table) {
    for (std::size_t i = 0; i < count; ++i) {
        const Bytes block = walker.take(column_block::kSize);
        table.info.columns.push_back(readColumnInfo(block));
        table.storage.push_back(readStorage(block, table.info.columns.back()));
        checkColumn(table, table.info.columns.back(), table.storage.back());
    }
    for (ColumnInfo& info : table.info.columns) info.name = walker.takeName();
    sortByNumber(table);
    for (std::size_t i = 0; i < count; ++i) {
        const ColumnStorage& storage = table.storage[i];
        if (table.isFixed(i) && storage.size > 0) {
            table.fixedSize =
                std::max<std::size_t>(table.fixedSize, storage.fixedOffset + storage.size);
        }
    }
}

std::optional<std::size_t> positionOf(const TableDef& table, std::uint16_t number) {
    const auto& columns = table.info.columns;
    const auto found = std::ranges::lower_bound(columns, number, {}, &ColumnInfo::number);
    if (found == columns.end() || found->number != number) return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

RealIndexDef readRealIndex(Bytes block, const TableDef& table) {
    RealIndexDef index;
    for (std::size_t k = 0; k < real_index::kColumnCount; ++k) {
        const std::size_t at = real_index::kColumns + k * real_index::kColumnSize;
        const std::uint16_t number = u16At(block, at);
        if (number == real_index::kUnused) continue;
        const auto column = positionOf(table, number);
        if (!column) throwBad("index over a column that does not exist.");
        index.columns.push_back({*column, u8At(block, at + 2) == real_index::kAscending});
    }
    if (index.columns.empty()) throwBad("index without columns.");
    index.map = pointerAt(block, real_index::kMap);
    index.root = u32At(block, real_index::kRoot);
    index.flags = u8At(block, real_index::kFlags);
    return index;
}

LogicalIndexDef readLogicalIndex(Bytes block, const TableDef& table) {
    LogicalIndexDef index;
    index.number = u32At(block, logical_index::kNumber);
    index.real = u32At(block, logical_index::kReal);
    index.side = u8At(block, logical_index::kSide);
    index.partner = i32At(block, logical_index::kPartner);
    index.otherTable = u32At(block, logical_index::kOtherTable);
    index.cascadeUpdates = u8At(block, logical_index::kCascadeUpdates);
    index.cascadeDeletes = u8At(block, logical_index::kCascadeDeletes);
    index.kind = u8At(block, logical_index::kKind);
    if (index.real >= table.trees.size()) throwBad("index over a tree that does not exist.");
    return index;
}

IndexInfo describeIndex(const TableDef& table, const LogicalIndexDef& logical) {
    const RealIndexDef& tree = table.trees[logical.real];
    IndexInfo info;
    info.columns = tree.columns;
    info.primary = logical.kind == logical_index::kPrimary;
    info.foreign = logical.kind == logical_index::kForeign;
    info.unique = tree.unique();
    info.required = tree.required();
    info.ignoreNulls = tree.ignoreNulls();
    info.tree = logical.real;
    return info;
}

void readIndexes(Walker& walker, std::size_t realCount, std::size_t logicalCount, TableDef& table) {
    for (std::size_t i = 0; i < realCount; ++i) {
        table.trees.push_back(readRealIndex(walker.take(real_index::kSize), table));
    }
    for (std::size_t i = 0; i < logicalCount; ++i) {
        table.logical.push_back(readLogicalIndex(walker.take(logical_index::kSize), table));
        table.info.indexes.push_back(describeIndex(table, table.logical.back()));
    }
    for (IndexInfo& info : table.info.indexes) info.name = walker.takeName();
}

void readLongValueMaps(Walker& walker, TableDef& table) {
    for (std::size_t i = 0; i <= row::kMaxColumns; ++i) {
        const std::uint16_t number = u16At(walker.take(2), 0);
        if (number == kEnd) return;
        const Bytes maps = walker.take(kTailEntrySize - 2);
        const auto column = positionOf(table, number);
        if (!column) continue;
        table.storage[*column].ownedMap = pointerAt(maps, 0);
        table.storage[*column].freeMap = pointerAt(maps, 4);
    }
    throwBad("its list of long-value columns does not end.");
}

TableDef decode(Bytes bytes, PageNumber page) {
    TableDef table;
    table.page = page;
    table.info.rows = u32At(bytes, kRows);
    table.info.system = u8At(bytes, kKind) == kSystemTable;
    table.maxColumns = u16At(bytes, kMaxColumns);
    table.variableColumns = u16At(bytes, kVariableColumns);
    table.ownedMap = pointerAt(bytes, kOwnedMap);
    table.freeMap = pointerAt(bytes, kFreeMap);
    const std::size_t columns = u16At(bytes, kColumns);
    const std::size_t logical = u32At(bytes, kLogicalIndexes);
    const std::size_t real = u32At(bytes, kRealIndexes);
    if (columns > table.maxColumns || table.maxColumns > row::kMaxColumns ||
        table.variableColumns > row::kMaxColumns) {
        throwBad("it claims " + std::to_string(columns) + " columns.");
    }
    if (logical > kMaxIndexBlocks || real > kMaxIndexBlocks)
        throwBad("it claims too many indexes.");
    Walker walker(bytes, kStatistics + real * statistics::kSize);
    readColumns(walker, columns, table);
    readIndexes(walker, real, logical, table);
    readLongValueMaps(walker, table);
    return table;
}

}  // namespace

DefinitionBytes readDefinitionBytes(PageFile& file, PageNumber first) {
    DefinitionBytes joined;
    PageNumber next = first;
    do {
        const PageBytes page = file.read(next);
        if (page[0] != static_cast<std::uint8_t>(PageType::Definition)) {
            throwCorrupt(next, "it is not a table definition.");
        }
        if (joined.pages.size() == kMaxChain || std::ranges::count(joined.pages, next) != 0) {
            throwCorrupt(next, "the table definition's pages do not come to an end.");
        }
        const std::size_t skip = joined.pages.empty() ? 0 : kPageHeader;
        joined.bytes.insert(joined.bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(skip),
                            page.end());
        joined.pages.push_back(next);
        next = u32At(page, kNext);
    } while (next != 0);
    return joined;
}

TableDef readTableDef(PageFile& file, PageNumber page) {
    const DefinitionBytes joined = readDefinitionBytes(file, page);
    return atPage(page, [&] { return decode(joined.bytes, page); });
}

}  // namespace stelvan::jet
