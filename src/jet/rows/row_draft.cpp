#include "jet/rows/row_draft.h"

#include <algorithm>
#include <utility>

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
      builder_(table) {
    for (std::size_t i = 0; i < table.info.columns.size(); ++i)
        if (isLongValue(table.info.columns[i].type)) longColumns_.push_back(i);
    longValues_.resize(longColumns_.size());
}

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
    prepareLongValues();
    build(old);
    while (row_.size() > row::kMaxSize && shortenRow()) build(old);
    if (row_.size() <= row::kMaxSize) return;
    throw Error(ErrorKind::RowTooLarge, "A row of '" + table_->info.name + "' would take " +
                                            std::to_string(row_.size()) + " bytes; " +
                                            std::to_string(row::kMaxSize) + " are the most.")
        .about(table_->info.name);
}

void RowDraft::prepareLongValues() {
    longCount_ = 0;
    for (const std::size_t column : longColumns_) {
        if (!given_[column] || isNull(values_[column])) continue;
        LongValue& value = longValues_[longCount_++];
        value.column = column;
        encodeLongValue(table_->info.columns[column], values_[column], value.data);
    }
}

void RowDraft::build(const RowView* old) {
    row_ = builder_.build(
        [this, old](std::size_t column, Blob& out) { return appendColumn(column, old, out); });
}

bool RowDraft::appendColumn(std::size_t column, const RowView* old, Blob& out) {
    const ColumnInfo& info = table_->info.columns[column];
    if (!given_[column]) {
        if (old == nullptr) return false;
        if (info.type == ColumnType::Boolean) return old->flag(column);
        const auto bytes = old->stored(column);
        if (bytes) out.insert(out.end(), bytes->begin(), bytes->end());
        return bytes.has_value();
    }
    if (info.type == ColumnType::Boolean) {
        const auto* flag = std::get_if<bool>(&values_[column]);
        return flag != nullptr && *flag;
    }
    if (isNull(values_[column])) return false;
    if (isLongValue(info.type)) {
        appendLongValue(column, out);
    } else {
        encodeStored(info, values_[column], out);
    }
    return true;
}

// Of a value that stands elsewhere the reference is not known yet: room is left for it.
void RowDraft::appendLongValue(std::size_t column, Blob& out) {
    for (LongValue& value : longValues()) {
        if (value.column != column) continue;
        value.at = out.size();
        const Blob& data = value.data.bytes;
        const StoredReference reference =
            value.data.inlined ? inlineReference(data.size()) : StoredReference{};
        out.insert(out.end(), reference.begin(), reference.end());
        if (value.data.inlined) out.insert(out.end(), data.begin(), data.end());
    }
}

// Short long values leave a row that would be too large with them; false where none is left.
bool RowDraft::shortenRow() {
    for (LongValue& value : longValues())
        if (std::exchange(value.data.inlined, false)) return true;
    return false;
}

void RowDraft::storeLongValues(std::vector<std::optional<LongValueStore>>& stores) {
    for (const LongValue& value : longValues()) {
        if (value.data.inlined) continue;
        std::ranges::copy(stores[value.column]->write(value.data.bytes),
                          row_.begin() + static_cast<std::ptrdiff_t>(value.at));
    }
}

}  // namespace stelvan::jet
