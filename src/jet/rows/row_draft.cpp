#include "jet/rows/row_draft.h"

#include <algorithm>

#include "jet/pages/long_value.h"
#include "jet/rows/conversion.h"

namespace stelvan::jet {

namespace {

// What a byte order mark at the beginning of a plain text would be taken for.
constexpr std::string_view kCompressionMark = "\xEF\xBB\xBF";

// Values that are what the column holds already: the usual case, which needs no copy.
bool fitsAsItIs(const ColumnInfo& column, const Value& value) {
    switch (column.type) {
        case ColumnType::Boolean:
            return std::holds_alternative<bool>(value);
        case ColumnType::Long:
            return std::holds_alternative<std::int32_t>(value);
        case ColumnType::Double:
            return std::holds_alternative<double>(value);
        case ColumnType::Text: {
            // No text has more UTF-16 units than bytes.
            const auto* text = std::get_if<std::string>(&value);
            return text != nullptr && text->size() <= column.length / 2u;
        }
        case ColumnType::Memo:
            return std::holds_alternative<std::string>(value);
        case ColumnType::Ole:
            return std::holds_alternative<Blob>(value);
        default:
            return false;
    }
}

}  // namespace

RowDraft::RowDraft(const RowLayout& table)
    : table_(&table),
      converted_(table.info.columns.size()),
      values_(table.info.columns.size()),
      given_(table.info.columns.size()),
      stored_(table.info.columns.size()) {}

void RowDraft::clear() {
    std::ranges::fill(values_, ValueView(Null{}));
    given_.assign(given_.size(), false);
}

void RowDraft::give(std::span<const ColumnValue> values) {
    for (const auto& [column, value] : values) {
        if (column >= values_.size()) {
            throw Error(ErrorKind::NoSuchColumn,
                        "The table '" + table_->info.name + "' has no such column.")
                .about(table_->info.name);
        }
        give(column, value);
    }
}

void RowDraft::give(std::size_t column, const Value& value) {
    const ColumnInfo& info = table_->info.columns[column];
    given_[column] = true;
    if (fitsAsItIs(info, value)) {
        values_[column] = toView(value);
    } else {
        converted_[column] = convertTo(info, value);
        values_[column] = toView(converted_[column]);
    }
    const auto* text = std::get_if<std::string_view>(&values_[column]);
    if (text != nullptr && text->starts_with(kCompressionMark)) {
        throw Error(ErrorKind::TypeMismatch, "A text that begins with U+FEFF cannot be stored.")
            .about(info.name);
    }
}

ValueView RowDraft::value(std::size_t column) const {
    if (isNull(values_[column]) && table_->info.columns[column].type == ColumnType::Boolean)
        return false;
    return values_[column];
}

std::string RowDraft::fieldName(std::size_t column) const {
    return table_->info.name + "." + table_->info.columns[column].name;
}

void RowDraft::checkProperties(bool newRow) const {
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (!newRow && !given_[i]) continue;
        const ColumnInfo& column = table_->info.columns[i];
        if (column.required && column.type != ColumnType::Boolean && isNull(values_[i])) {
            throw Error::of(ErrorKind::NullInRequired, fieldName(i));
        }
        const auto* text = std::get_if<std::string_view>(&values_[i]);
        if (text != nullptr && text->empty() && !column.allowZeroLength) {
            throw Error::of(ErrorKind::ZeroLength, fieldName(i));
        }
    }
}

void RowDraft::encode(const RowView* old) {
    parts_.clear();
    encoded_.clear();
    longValues_.clear();
    for (std::size_t i = 0; i < values_.size(); ++i) {
        stored_[i] = {};
        if (given_[i]) {
            encodeGiven(i);
        } else if (old != nullptr) {
            takeOver(i, *old);
        }
    }
    for (const Part& part : parts_)
        stored_[part.column].bytes = Bytes(encoded_).subspan(part.begin, part.size);
    for (LongValue& value : longValues_) {
        value.reference = value.data.inlined ? inlineReference(value.data.bytes)
                                             : Blob(long_value::kReferenceSize);
        stored_[value.column].bytes = value.reference;
    }
    makeRoom();
}

void RowDraft::encodeGiven(std::size_t column) {
    const ColumnInfo& info = table_->info.columns[column];
    if (info.type == ColumnType::Boolean) {
        const auto* flag = std::get_if<bool>(&values_[column]);
        stored_[column].present = flag != nullptr && *flag;
        return;
    }
    if (isNull(values_[column])) return;
    stored_[column].present = true;
    if (isLongValue(info.type)) {
        longValues_.push_back({column, encodeLongValue(info, values_[column]), {}});
        return;
    }
    const std::size_t begin = encoded_.size();
    encodeStored(info, values_[column], encoded_);
    parts_.push_back({column, begin, encoded_.size() - begin});
}

void RowDraft::takeOver(std::size_t column, const RowView& old) {
    if (table_->info.columns[column].type == ColumnType::Boolean) {
        stored_[column].present = old.flag(column);
        return;
    }
    const auto bytes = old.stored(column);
    if (bytes) stored_[column] = {true, *bytes};
}

// Short long values leave a row that would be too large with them.
void RowDraft::makeRoom() {
    for (LongValue& value : longValues_) {
        if (rowSize(*table_, stored_) <= row::kMaxSize) return;
        value.data.inlined = false;
        value.reference.assign(long_value::kReferenceSize, 0);
        stored_[value.column].bytes = value.reference;
    }
    const std::size_t size = rowSize(*table_, stored_);
    if (size <= row::kMaxSize) return;
    throw Error(ErrorKind::RowTooLarge, "A row of '" + table_->info.name + "' would take " +
                                            std::to_string(size) + " bytes; " +
                                            std::to_string(row::kMaxSize) + " are the most.")
        .about(table_->info.name);
}

void RowDraft::storeLongValues(std::vector<std::optional<LongValueStore>>& stores) {
    for (LongValue& value : longValues_) {
        if (value.data.inlined) continue;
        value.reference = stores[value.column]->write(value.data.bytes);
        stored_[value.column].bytes = value.reference;
    }
}

Bytes RowDraft::bytes() {
    encodeRow(*table_, stored_, row_);
    return row_;
}

}  // namespace stelvan::jet
