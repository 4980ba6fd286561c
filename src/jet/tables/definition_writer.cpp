#include "jet/tables/definition_writer.h"

#include <algorithm>
#include <numeric>

#include "base/utf.h"
#include "jet/pages/record_pointer.h"
#include "jet/rows/row_layout.h"
#include "jet/rows/text.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

namespace {

using namespace definition;

void appendBytes(Blob& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

void appendName(Blob& out, std::string_view name) {
    const std::size_t at = out.size();
    out.resize(at + 2);
    encodeText(base::toUtf16(name), false, out);
    putU16(out, at, static_cast<std::uint16_t>(out.size() - at - 2));
}

template <typename Names>
std::vector<std::size_t> blockOrder(const Names& named, BlockOrder order) {
    std::vector<std::size_t> positions(named.size());
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    if (order == BlockOrder::ByName) {
        std::ranges::sort(positions, {}, [&](std::size_t i) { return foldName(named[i].name); });
    }
    return positions;
}

std::size_t variableColumnsBefore(const TableDef& table, std::size_t position) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < position; ++i) count += table.isFixed(i) ? 0 : 1;
    return count;
}

Blob columnBlock(const TableDef& table, std::size_t position, BlockOrder order) {
    const ColumnInfo& info = table.info.columns[position];
    const ColumnStorage& storage = table.storage[position];
    const bool fixed = table.isFixed(position);
    Blob block(column_block::kSize);
    block[column_block::kType] = static_cast<std::uint8_t>(info.type);
    putU32(block, column_block::kMark, kDefinitionMark);
    putU16(block, column_block::kNumber, info.number);
    putU16(block, column_block::kVariableIndex,
           fixed ? static_cast<std::uint16_t>(variableColumnsBefore(table, position))
                 : storage.variableIndex);
    putU16(block, column_block::kOrdinal,
           order == BlockOrder::ByName ? std::uint16_t{0} : info.number);
    if (info.type == ColumnType::Numeric) {
        block[column_block::kPrecision] = info.precision;
        block[column_block::kScale] = info.scale;
    } else {
        putU16(block, column_block::kLocale, info.order.locale);
        block[column_block::kSortVersion] = info.order.version;
    }
    block[column_block::kFlags] = storage.flags;
    block[column_block::kExtraFlags] = info.compressed ? column_block::kCompressed : 0;
    if (fixed) putU16(block, column_block::kFixedOffset, storage.fixedOffset);
    putU16(block, column_block::kLength, info.length);
    return block;
}

Blob head(const TableDef& table, BlockOrder order) {
    Blob bytes(kStatistics);
    bytes[0] = static_cast<std::uint8_t>(PageType::Definition);
    bytes[1] = kPageInUse;
    putU32(bytes, kMark, kDefinitionMark);
    putU32(bytes, kRows, table.info.rows);
    putU32(bytes, kAutoNumberStep, 1);
    bytes[kKind] = order == BlockOrder::ByName ? kSystemTable : kUserTable;
    putU16(bytes, kMaxColumns, table.maxColumns);
    putU16(bytes, kVariableColumns, table.variableColumns);
    putU16(bytes, kColumns, static_cast<std::uint16_t>(table.info.columns.size()));
    putPointer(bytes, kOwnedMap, table.ownedMap);
    putPointer(bytes, kFreeMap, table.freeMap);
    return bytes;
}

Blob tail(const TableDef& table, const std::vector<std::size_t>& columns) {
    Blob bytes;
    for (const std::size_t column : columns) {
        if (!isLongValue(table.info.columns[column].type)) continue;
        const std::size_t at = bytes.size();
        bytes.resize(at + kTailEntrySize);
        putU16(bytes, at, table.info.columns[column].number);
        putPointer(bytes, at + 2, table.storage[column].ownedMap);
        putPointer(bytes, at + 6, table.storage[column].freeMap);
    }
    bytes.resize(bytes.size() + 2);
    putU16(bytes, bytes.size() - 2, kEnd);
    return bytes;
}

}  // namespace

std::uint32_t DefinitionParts::addRealIndex(const RealIndexDef& index, const TableInfo& info) {
    const auto position = u32At(head, kRealIndexes);
    putU32(head, kRealIndexes, position + 1);
    statistics.resize(statistics.size() + statistics::kSize);
    Blob block(real_index::kSize);
    putU32(block, real_index::kMark, kRealIndexMark);
    for (std::size_t k = 0; k < real_index::kColumnCount; ++k) {
        const std::size_t at = real_index::kColumns + k * real_index::kColumnSize;
        putU16(block, at, real_index::kUnused);
        if (k >= index.columns.size()) continue;
        putU16(block, at, info.columns[index.columns[k].column].number);
        block[at + 2] = index.columns[k].ascending ? real_index::kAscending : 0;
    }
    putPointer(block, real_index::kMap, index.map);
    putU32(block, real_index::kRoot, index.root);
    block[real_index::kFlags] = index.flags;
    appendBytes(realIndexes, block);
    return position;
}

void DefinitionParts::addLogicalIndex(const LogicalIndexDef& index, const std::string& name) {
    putU32(head, kLogicalIndexes, u32At(head, kLogicalIndexes) + 1);
    Blob block(logical_index::kSize);
    putU32(block, logical_index::kMark, kDefinitionMark);
    putU32(block, logical_index::kNumber, index.number);
    putU32(block, logical_index::kReal, index.real);
    block[logical_index::kSide] = index.side;
    storeAt<std::int32_t>(block, logical_index::kPartner, index.partner);
    putU32(block, logical_index::kOtherTable, index.otherTable);
    block[logical_index::kCascadeUpdates] = index.cascadeUpdates;
    block[logical_index::kCascadeDeletes] = index.cascadeDeletes;
    block[logical_index::kKind] = index.kind;
    appendBytes(logicalIndexes, block);
    appendName(logicalNames, name);
}

Blob DefinitionParts::join() const {
    Blob bytes = head;
    for (const Blob* part :
         {&statistics, &columns, &realIndexes, &logicalIndexes, &logicalNames, &tail}) {
        appendBytes(bytes, *part);
    }
    putU32(bytes, kLength, static_cast<std::uint32_t>(bytes.size()));
    return bytes;
}

DefinitionParts makeDefinition(const TableDef& table, BlockOrder order) {
    DefinitionParts parts;
    const auto columns = blockOrder(table.info.columns, order);
    parts.head = head(table, order);
    for (const std::size_t column : columns)
        appendBytes(parts.columns, columnBlock(table, column, order));
    for (const std::size_t column : columns)
        appendName(parts.columns, table.info.columns[column].name);
    for (const RealIndexDef& index : table.trees) parts.addRealIndex(index, table.info);
    for (const std::size_t index : blockOrder(table.info.indexes, order)) {
        parts.addLogicalIndex(table.logical[index], table.info.indexes[index].name);
    }
    parts.tail = tail(table, columns);
    return parts;
}

namespace {

// Cuts one section after the other off a definition.
class Cutter {
public:
    explicit Cutter(Bytes bytes) : bytes_(bytes) {}
    Blob cut(std::size_t size) {
        const Bytes part = bytesAt(bytes_, at_, size);
        at_ += size;
        return {part.begin(), part.end()};
    }
    Blob cutNames(std::size_t count) {
        std::size_t size = 0;
        for (std::size_t i = 0; i < count; ++i) size += 2 + u16At(bytes_, at_ + size);
        return cut(size);
    }
    Blob cutTail() {
        std::size_t size = 0;
        while (u16At(bytes_, at_ + size) != kEnd) size += kTailEntrySize;
        return cut(size + 2);
    }

private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

}  // namespace

DefinitionParts splitDefinition(const DefinitionBytes& bytes) {
    return atPage(bytes.pages.front(), [&] {
        Cutter cutter(bytes.bytes);
        DefinitionParts parts;
        parts.head = cutter.cut(kStatistics);
        const std::size_t columns = u16At(parts.head, kColumns);
        const std::size_t real = u32At(parts.head, kRealIndexes);
        const std::size_t logical = u32At(parts.head, kLogicalIndexes);
        parts.statistics = cutter.cut(real * statistics::kSize);
        parts.columns = cutter.cut(columns * column_block::kSize);
        appendBytes(parts.columns, cutter.cutNames(columns));
        parts.realIndexes = cutter.cut(real * real_index::kSize);
        parts.logicalIndexes = cutter.cut(logical * logical_index::kSize);
        parts.logicalNames = cutter.cutNames(logical);
        parts.tail = cutter.cutTail();
        return parts;
    });
}

void writeDefinition(PageFile& file, const std::vector<PageNumber>& present, const Blob& bytes) {
    constexpr std::size_t kFurther = kPageSize - kPageHeader;
    FreePages free(file);
    std::vector<PageNumber> pages = present;
    const std::size_t rest = bytes.size() > kPageSize ? bytes.size() - kPageSize : 0;
    const std::size_t needed = 1 + (rest + kFurther - 1) / kFurther;
    while (pages.size() < needed) pages.push_back(free.take());
    for (; pages.size() > needed; pages.pop_back())
        free.give(pages.back(), PageType::FreedDefinition);
    std::size_t at = 0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const WritablePageBytes page = file.edit(pages[i]);
        const std::size_t begin = i == 0 ? 0 : kPageHeader;
        const std::size_t size = std::min(bytes.size() - at, kPageSize - begin);
        const std::size_t unused = kPageSize - begin - size;
        std::ranges::fill(page, std::uint8_t{0});
        std::ranges::copy(Bytes(bytes).subspan(at, size),
                          page.begin() + static_cast<std::ptrdiff_t>(begin));
        page[0] = static_cast<std::uint8_t>(PageType::Definition);
        page[1] = kPageInUse;
        putU16(page, kFree,
               static_cast<std::uint16_t>(unused > kPageHeader ? unused - kPageHeader : 0));
        putU32(page, kNext, i + 1 < pages.size() ? pages[i + 1] : 0);
        at += size;
    }
}

}  // namespace stelvan::jet
