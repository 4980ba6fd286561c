#include "jet/rows/row_reader.h"

#include <numeric>

#include "jet/pages/long_value.h"
#include "jet/rows/text.h"

namespace stelvan::jet {

RowReader::RowReader(PageFile& file, std::shared_ptr<const RowLayout> table,
                     const ColumnSet& wanted)
    : file_(&file), table_(std::move(table)), columns_(table_->info.columns.size()) {
    for (const std::size_t column : wanted) {
        if (column >= columns_.size()) continue;
        columns_[column].place = placeOf(*table_, column);
        columns_[column].type = table_->info.columns[column].type;
        columns_[column].wanted = true;
    }
}

void RowReader::set(Bytes row, PageNumber page) {
    ++row_;
    arena_.reset();
    view_ = RowView(*table_, row, page);
}

ValueView RowReader::value(std::size_t column) {
    if (column >= columns_.size() || !columns_[column].wanted) return Null{};
    const Column& known = columns_[column];
    if (known.type == ColumnType::Boolean) return view_.flag(known.place);
    const auto stored = view_.stored(known.place);
    if (!stored) return Null{};
    if (known.type == ColumnType::Text) {
        if (const auto text = textInPlace(*stored)) return *text;
        return decodeOnce(column, *stored);
    }
    if (isLongValue(known.type)) return decodeOnce(column, *stored);
    return atPage(view_.page(),
                  [&] { return decodeStored(table_->info.columns[column], *stored, arena_); });
}

ValueView RowReader::decodeOnce(std::size_t column, Bytes stored) {
    Column& known = columns_[column];
    if (known.row != row_) {
        known.decoded =
            atPage(view_.page(), [&] { return decode(table_->info.columns[column], stored); });
        known.row = row_;
    }
    return known.decoded;
}

ValueView RowReader::decode(const ColumnInfo& info, Bytes stored) {
    if (!isLongValue(info.type)) return decodeStored(info, stored, arena_);
    const Bytes bytes = readLongValue(*file_, readReference(stored), arena_);
    if (info.type == ColumnType::Memo) return decodeTextTo(arena_, bytes);
    return bytes;
}

}  // namespace stelvan::jet
