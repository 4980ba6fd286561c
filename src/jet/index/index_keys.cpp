#include "jet/index/index_keys.h"

#include <algorithm>
#include <bit>

namespace stelvan::jet {

namespace {

constexpr std::uint8_t kNullAscending = 0x00;
constexpr std::uint8_t kNullDescending = 0xFF;
constexpr std::uint8_t kValueAscending = 0x7F;
constexpr std::uint8_t kValueDescending = 0x80;

using KeyBytes = std::vector<std::uint8_t>;

// A number whose unsigned order is that of the values; high byte first.
template <typename Unsigned>
void appendOrdered(KeyBytes& key, Unsigned ordered, bool ascending) {
    if (!ascending) ordered = static_cast<Unsigned>(~ordered);
    for (int shift = static_cast<int>(sizeof ordered - 1) * 8; shift >= 0; shift -= 8) {
        key.push_back(static_cast<std::uint8_t>(ordered >> shift));
    }
}

// Negative numbers sort below positive ones once the sign bit is turned over.
template <typename Signed>
auto orderedInteger(Signed number) {
    using Unsigned = std::make_unsigned_t<Signed>;
    return static_cast<Unsigned>(static_cast<Unsigned>(number) ^
                                 (Unsigned{1} << (sizeof number * 8 - 1)));
}

template <typename Unsigned, typename Real>
Unsigned orderedReal(Real number) {
    constexpr Unsigned kSign = Unsigned{1} << (sizeof(Unsigned) * 8 - 1);
    const auto bits = std::bit_cast<Unsigned>(number);
    return (bits & kSign) != 0 ? static_cast<Unsigned>(~bits) : static_cast<Unsigned>(bits | kSign);
}

// Groups of eight bytes, each followed by how many of them count, or by 9 where another group
// follows. What says that more follows is not turned over in a descending key.
void appendSegments(KeyBytes& key, Bytes bytes, bool ascending) {
    constexpr std::size_t kGroup = 8;
    constexpr std::uint8_t kMore = 9;
    const std::uint8_t turn = ascending ? 0x00 : 0xFF;
    for (std::size_t start = 0; start < bytes.size(); start += kGroup) {
        const std::size_t count = std::min(kGroup, bytes.size() - start);
        for (std::size_t i = 0; i < kGroup; ++i) {
            const std::uint8_t byte = i < count ? bytes[start + i] : std::uint8_t{0};
            key.push_back(static_cast<std::uint8_t>(byte ^ turn));
        }
        const bool more = start + kGroup < bytes.size();
        key.push_back(more ? kMore : static_cast<std::uint8_t>(count ^ turn));
    }
}

// The engine's way with the sign, which sorts negative decimals oddly in descending keys; it must
// be kept.
void appendNumeric(KeyBytes& key, const Numeric& number, bool ascending) {
    const std::uint8_t turn = number.negative == ascending ? 0xFF : 0x00;
    key.push_back(number.negative ? 0x00 : 0xFF);
    for (const std::uint32_t word : number.magnitude) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            key.push_back(static_cast<std::uint8_t>((word >> shift) ^ turn));
        }
    }
}

template <typename Wanted>
const Wanted& as(const ValueView& value) {
    const Wanted* wanted = std::get_if<Wanted>(&value);
    if (wanted == nullptr) {
        throw Error(ErrorKind::TypeMismatch, "A value of another type cannot stand in an index.");
    }
    return *wanted;
}

void appendValue(KeyBytes& key, ColumnType type, const ValueView& value, bool ascending,
                 ExpansionCount count) {
    switch (type) {
        case ColumnType::Boolean:
            key.push_back(as<bool>(value) == ascending ? 0x00 : 0xFF);
            return;
        case ColumnType::Byte:
            appendOrdered(key, static_cast<std::uint8_t>(as<std::int32_t>(value)), ascending);
            return;
        case ColumnType::Integer:
            appendOrdered(key, orderedInteger(static_cast<std::int16_t>(as<std::int32_t>(value))),
                          ascending);
            return;
        case ColumnType::Long:
            appendOrdered(key, orderedInteger(as<std::int32_t>(value)), ascending);
            return;
        case ColumnType::Money:
            appendOrdered(key, orderedInteger(as<Money>(value).scaled), ascending);
            return;
        case ColumnType::Single:
            appendOrdered(key, orderedReal<std::uint32_t>(as<float>(value)), ascending);
            return;
        case ColumnType::Double:
            appendOrdered(key, orderedReal<std::uint64_t>(as<double>(value)), ascending);
            return;
        case ColumnType::DateTime:
            appendOrdered(key, orderedReal<std::uint64_t>(as<DateTime>(value).days), ascending);
            return;
        case ColumnType::Numeric:
            appendNumeric(key, as<Numeric>(value), ascending);
            return;
        case ColumnType::Guid:
            appendSegments(key, as<Guid>(value).bytes, ascending);
            return;
        case ColumnType::Text:
        case ColumnType::Memo:
            appendTextKey(key, as<std::string_view>(value), ascending, count);
            return;
        case ColumnType::Binary:
        case ColumnType::FixedBinary:
        case ColumnType::Ole:
            appendSegments(key, as<std::span<const std::uint8_t>>(value), ascending);
            return;
    }
}

}  // namespace

bool KeyEncoder::canEncode(std::span<const ColumnInfo> columns,
                           std::span<const IndexColumn> parts) {
    return std::all_of(parts.begin(), parts.end(), [&](const IndexColumn& part) {
        const ColumnInfo& column = columns[part.column];
        return !isText(column.type) || canCollate(column.order);
    });
}

KeyEncoder::KeyEncoder(std::span<const ColumnInfo> columns, std::span<const IndexColumn> parts) {
    for (const IndexColumn& part : parts) {
        const ColumnInfo& column = columns[part.column];
        if (isText(column.type) && !canCollate(column.order)) {
            throw Error(
                ErrorKind::UnsupportedOrder,
                "The index over column '" + column.name +
                    "' has a sort order that cannot be computed here; the table can only be read.")
                .about(column.name);
        }
        parts_.push_back({part.column, column.type, part.ascending});
    }
}

std::uint8_t KeyEncoder::valueFlag(std::size_t part) const {
    return parts_[part].ascending ? kValueAscending : kValueDescending;
}

void KeyEncoder::encode(std::span<const ValueView> values, IndexKey& key) const {
    encodeCounting(values, ExpansionCount::Letters, key);
}

bool KeyEncoder::encodeVariant(std::span<const ValueView> values, IndexKey& key) const {
    const bool plain = std::none_of(values.begin(), values.end(), [](const ValueView& value) {
        const auto* text = std::get_if<std::string_view>(&value);
        return text != nullptr &&
               std::any_of(text->begin(), text->end(), [](char c) { return (c & 0x80) != 0; });
    });
    if (plain) return false;
    IndexKey usual;
    encode(values, usual);
    encodeCounting(values, ExpansionCount::Once, key);
    return key.bytes != usual.bytes;
}

void KeyEncoder::encodeCounting(std::span<const ValueView> values, ExpansionCount count,
                                IndexKey& key) const {
    if (values.size() > parts_.size()) {
        throw Error(ErrorKind::Misuse, "An index was given more values than it has columns.");
    }
    key.bytes.clear();
    key.anyNull = false;
    key.allNull = true;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Part& part = parts_[i];
        if (isNull(values[i]) && part.type != ColumnType::Boolean) {
            key.bytes.push_back(part.ascending ? kNullAscending : kNullDescending);
            key.anyNull = true;
            continue;
        }
        key.allNull = false;
        key.bytes.push_back(valueFlag(i));
        appendValue(key.bytes, part.type, isNull(values[i]) ? ValueView(false) : values[i],
                    part.ascending, count);
    }
}

}  // namespace stelvan::jet
