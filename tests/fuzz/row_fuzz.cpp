// The bytes of one row under a definition with every type of column, fixed and variable.
#include "jet/pages/long_value.h"
#include "jet/rows/row_codec.h"
#include "jet/rows/row_layout.h"
#include "tests/fuzz/support/input.h"

namespace {

using namespace stelvan;

void addColumn(jet::RowLayout& table, jet::ColumnType type, std::uint16_t length, bool fixed) {
    jet::ColumnInfo column;
    column.type = type;
    column.number = static_cast<std::uint16_t>(table.info.columns.size());
    column.length = length;
    column.fixedLength = fixed;
    column.scale = type == jet::ColumnType::Numeric ? 4 : 0;
    jet::ColumnStorage storage;
    storage.flags = fixed ? jet::column_flag::kFixed : 0;
    if (fixed) {
        storage.fixedOffset = static_cast<std::uint16_t>(table.fixedSize);
        storage.size = type == jet::ColumnType::Boolean ? 0 : length;
        table.fixedSize += storage.size;
    } else {
        storage.variableIndex = table.variableColumns++;
    }
    table.info.columns.push_back(column);
    table.storage.push_back(storage);
    ++table.maxColumns;
}

jet::RowLayout everyType() {
    using enum jet::ColumnType;
    jet::RowLayout table;
    for (const auto& [type, length] : {std::pair{Boolean, 1},
                                       {Byte, 1},
                                       {Integer, 2},
                                       {Long, 4},
                                       {Money, 8},
                                       {Single, 4},
                                       {Double, 8},
                                       {DateTime, 8},
                                       {Guid, 16},
                                       {Numeric, 17}}) {
        addColumn(table, type, static_cast<std::uint16_t>(length), true);
    }
    for (const jet::ColumnType type : {Text, Binary, Memo, Ole, Text})
        addColumn(table, type, 510, false);
    return table;
}

void readColumn(const jet::RowLayout& table, const jet::RowView& row, std::size_t column) {
    const jet::ColumnInfo& info = table.info.columns[column];
    if (info.type == jet::ColumnType::Boolean) {
        (void)row.flag(column);
        return;
    }
    const auto stored = row.stored(column);
    if (!stored) return;
    jet::Arena arena;
    if (jet::isLongValue(info.type)) {
        (void)jet::readReference(*stored);
    } else {
        (void)jet::toValue(jet::decodeStored(info, *stored, arena));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const jet::RowLayout kTable = everyType();
    fuzz::mayBeRefused([&] {
        const jet::RowView row(kTable, jet::Bytes(data, size), 1);
        for (std::size_t column = 0; column < kTable.info.columns.size(); ++column) {
            fuzz::mayBeRefused([&] { readColumn(kTable, row, column); });
        }
    });
    return 0;
}
