#include "jet/row_reader.h"

#include <numeric>

#include "jet/long_value.h"

namespace stelvan::jet {

RowReader::RowReader(PageFile& file, std::shared_ptr<const TableDef> table, const ColumnSet& wanted)
    : file_(&file),
      table_(std::move(table)),
      wanted_(table_->info.columns.size()),
      longValues_(table_->info.columns.size()) {
    for (const std::size_t column : wanted) {
        if (column < wanted_.size()) wanted_[column] = true;
    }
}

void RowReader::set(Bytes row, PageNumber page) {
    ++row_;
    arena_.reset();
    view_ = RowView(*table_, row, page);
}

ValueView RowReader::value(std::size_t column) {
    if (column >= wanted_.size() || !wanted_[column]) return Null{};
    return isLongValue(table_->info.columns[column].type) ? longValue(column) : decode(column);
}

ValueView RowReader::decode(std::size_t column) {
    const ColumnInfo& info = table_->info.columns[column];
    if (info.type == ColumnType::Boolean) return view_.flag(column);
    const auto stored = view_.stored(column);
    if (!stored) return Null{};
    return atPage(view_.page(), [&] { return decodeStored(info, *stored, arena_); });
}

ValueView RowReader::longValue(std::size_t column) {
    LongValue& known = longValues_[column];
    if (known.row != row_) {
        const auto stored = view_.stored(column);
        known.value = stored ? followReference(table_->info.columns[column].type, *stored) : Null{};
        known.row = row_;
    }
    return known.value;
}

ValueView RowReader::followReference(ColumnType type, Bytes stored) {
    return atPage(view_.page(), [&]() -> ValueView {
        const Bytes bytes = readLongValue(*file_, readReference(stored), arena_);
        if (type == ColumnType::Memo) return decodeTextTo(arena_, bytes);
        return bytes;
    });
}

ColumnSet allColumns(const TableInfo& info) {
    ColumnSet all(info.columns.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

}  // namespace stelvan::jet
