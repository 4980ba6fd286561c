#include "jet/rows/row_codec.h"

#include <algorithm>
#include <cstring>

#include "base/utf.h"
#include "jet/rows/text.h"

namespace stelvan::jet {

RowView::RowView(const RowLayout& table, Bytes bytes, PageNumber page)
    : table_(&table), row_(bytes), page_(page) {
    if (row_.size() < row::kFixed) throwCorrupt(page_, "a row is too short.");
    columns_ = u16At(row_, 0);
    const std::size_t maskSize = (columns_ + 7) / 8;
    if (columns_ > row::kMaxColumns + 1 || maskSize + row::kFixed > row_.size()) {
        throwCorrupt(page_, "a row claims " + std::to_string(columns_) + " columns.");
    }
    mask_ = row_.size() - maskSize;
    count_ = mask_;
    // A row written before the table had a variable column ends with its fixed part and mask; every
    // variable column then has a number that the row does not know, so that the count is never
    // looked at.
    if (table.variableColumns == 0 || mask_ < row::kFixed + 2) return;
    count_ = mask_ - 2;
    variables_ = u16At(row_, count_);
}

namespace {

[[noreturn]] void throwWrongSize() {
    throw Error(ErrorKind::Corrupt, "A stored value has not the size of its column's type.");
}

template <typename Number>
Number numberOf(Bytes stored) {
    if (stored.size() != sizeof(Number)) throwWrongSize();
    Number number;
    std::memcpy(&number, stored.data(), sizeof number);
    return number;
}

// Stored with the first three groups little-endian.
constexpr std::array<std::size_t, 16> kGuidOrder = {3, 2, 1,  0,  5,  4,  7,  6,
                                                    8, 9, 10, 11, 12, 13, 14, 15};

Guid guidOf(Bytes stored) {
    if (stored.size() != kGuidOrder.size()) throwWrongSize();
    Guid guid;
    for (std::size_t i = 0; i < kGuidOrder.size(); ++i) guid.bytes[i] = stored[kGuidOrder[i]];
    return guid;
}

constexpr std::uint8_t kNegative = 0x80;

Numeric numericOf(const ColumnInfo& column, Bytes stored) {
    if (stored.size() != 17) throwWrongSize();
    Numeric numeric;
    numeric.negative = stored[0] == kNegative;
    numeric.scale = column.scale;
    for (std::size_t i = 0; i < 4; ++i) numeric.magnitude[i] = u32At(stored, 1 + 4 * i);
    return numeric;
}

template <typename Number>
void append(Blob& out, Number number) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&number);
    out.insert(out.end(), bytes, bytes + sizeof number);
}

void appendText(const ColumnInfo& column, std::string_view text, Blob& out) {
    const std::size_t begin = out.size();
    const bool compress = column.compressed && !column.fixedLength;
    if (!encodeAscii(text, compress, out)) encodeText(base::toUtf16(text), compress, out);
    if (!column.fixedLength) return;
    while (out.size() - begin + 2 <= column.length) append<std::uint16_t>(out, u' ');
}

void appendBytes(const ColumnInfo& column, Bytes bytes, Blob& out) {
    const std::size_t begin = out.size();
    out.insert(out.end(), bytes.begin(), bytes.end());
    if (column.fixedLength) out.resize(begin + column.length);
}

void appendNumeric(const Numeric& numeric, Blob& out) {
    const bool zero = numeric.magnitude == std::array<std::uint32_t, 4>{};
    out.push_back(numeric.negative && !zero ? kNegative : 0);
    for (const std::uint32_t word : numeric.magnitude) append(out, word);
}

}  // namespace

std::string_view decodeTextTo(Arena& arena, Bytes stored) {
    if (const auto inPlace = textInPlace(stored)) return *inPlace;
    char* const begin = arena.take(decodedBound(stored.size()));
    const auto size = static_cast<std::size_t>(decodeText(stored, begin) - begin);
    arena.shrink(size);
    return {begin, size};
}

ValueView decodeStored(const ColumnInfo& column, Bytes stored, Arena& arena) {
    switch (column.type) {
        case ColumnType::Text:
            return decodeTextTo(arena, stored);
        case ColumnType::Long:
            return numberOf<std::int32_t>(stored);
        case ColumnType::Integer:
            return std::int32_t{numberOf<std::int16_t>(stored)};
        case ColumnType::Byte:
            return std::int32_t{numberOf<std::uint8_t>(stored)};
        case ColumnType::Double:
            return numberOf<double>(stored);
        case ColumnType::Single:
            return numberOf<float>(stored);
        case ColumnType::DateTime:
            return DateTime{numberOf<double>(stored)};
        case ColumnType::Money:
            return Money{numberOf<std::int64_t>(stored)};
        case ColumnType::Guid:
            return guidOf(stored);
        case ColumnType::Numeric:
            return numericOf(column, stored);
        default:
            return stored;
    }
}

void encodeStored(const ColumnInfo& column, const ValueView& value, Blob& out) {
    switch (column.type) {
        case ColumnType::Text:
            return appendText(column, std::get<std::string_view>(value), out);
        case ColumnType::Long:
            return append(out, std::get<std::int32_t>(value));
        case ColumnType::Integer:
            return append(out, static_cast<std::int16_t>(std::get<std::int32_t>(value)));
        case ColumnType::Byte:
            return append(out, static_cast<std::uint8_t>(std::get<std::int32_t>(value)));
        case ColumnType::Double:
            return append(out, std::get<double>(value));
        case ColumnType::Single:
            return append(out, std::get<float>(value));
        case ColumnType::DateTime:
            return append(out, std::get<DateTime>(value).days);
        case ColumnType::Money:
            return append(out, std::get<Money>(value).scaled);
        case ColumnType::Guid:
            for (const std::size_t i : kGuidOrder) out.push_back(std::get<Guid>(value).bytes[i]);
            return;
        case ColumnType::Numeric:
            return appendNumeric(std::get<Numeric>(value), out);
        default:
            return appendBytes(column, std::get<Bytes>(value), out);
    }
}

RowBuilder::RowBuilder(const RowLayout& table)
    : table_(&table),
      variable_(table.variableColumns, kNoColumn),
      starts_(table.variableColumns),
      mask_((table.maxColumns + 7u) / 8) {
    for (std::size_t column = 0; column < table.info.columns.size(); ++column) {
        const bool flag = table.info.columns[column].type == ColumnType::Boolean;
        if (flag || table.isFixed(column)) {
            fixed_.push_back(column);
        } else {
            variable_[table.storage[column].variableIndex] = column;
        }
    }
}

void RowBuilder::begin() {
    row_.assign(row::kFixed + table_->fixedSize, 0);
    putU16(row_, 0, table_->maxColumns);
    std::ranges::fill(mask_, std::uint8_t{0});
}

// The offsets in reverse, the end marker in front of them and their number behind.
void RowBuilder::finish() {
    if (!variable_.empty()) {
        append(row_, static_cast<std::uint16_t>(row_.size()));
        for (std::size_t v = variable_.size(); v-- > 0;) append(row_, starts_[v]);
        append(row_, table_->variableColumns);
    }
    row_.insert(row_.end(), mask_.begin(), mask_.end());
}

}  // namespace stelvan::jet
