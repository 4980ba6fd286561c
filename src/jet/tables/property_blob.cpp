#include "jet/tables/property_blob.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/utf.h"
#include "jet/rows/text.h"

namespace stelvan::jet {

using namespace property;

namespace {

constexpr std::string_view kRequired = "Required";
constexpr std::string_view kAllowZeroLength = "AllowZeroLength";
constexpr std::string_view kDefaultValue = "DefaultValue";
constexpr std::array<std::uint8_t, kMagicSize> kMagic = {'M', 'R', '2', 0};
constexpr std::uint8_t kThroughDefinition = 1;

std::string nameAt(Bytes bytes, std::size_t& at) {
    const std::size_t size = u16At(bytes, at);
    std::string name = decodeText(bytesAt(bytes, at + 2, size));
    at += 2 + size;
    return name;
}

std::vector<std::string> readNames(Bytes content) {
    std::vector<std::string> names;
    for (std::size_t at = 0; at < content.size();) names.push_back(nameAt(content, at));
    return names;
}

void applyEntry(const std::string& name, Bytes value, ColumnInfo& column) {
    if (name == kRequired) column.required = !value.empty() && value[0] != 0;
    if (name == kAllowZeroLength) column.allowZeroLength = !value.empty() && value[0] != 0;
    if (name == kDefaultValue) column.defaultValue = decodeText(value);
}

/// Calls `visit(name, value)` for each property of one block.
template <class Visit>
void forEntries(Bytes content, const std::vector<std::string>& names, const Visit& visit) {
    for (std::size_t at = u32At(content, 0); at < content.size();) {
        const std::size_t size = u16At(content, at);
        if (size < kEntryHeader) throwBeyondEnd();
        const Bytes entry = bytesAt(content, at, size);
        const std::size_t name = u16At(entry, 4);
        if (name >= names.size()) throwBeyondEnd();
        visit(names[name], bytesAt(entry, kEntryHeader, u16At(entry, 6)));
        at += size;
    }
}

/// Calls `visit(kind, content, names)` for each block that holds properties.
template <class Visit>
void forBlocks(Bytes blob, const Visit& visit) {
    if (blob.size() < kMagicSize || !std::ranges::equal(blob.first(kMagicSize), kMagic)) return;
    std::vector<std::string> names;
    for (std::size_t at = kMagicSize; at < blob.size();) {
        const std::size_t size = u32At(blob, at);
        if (size < kBlockHeader) throwBeyondEnd();
        const Bytes content = bytesAt(blob, at, size).subspan(kBlockHeader);
        const std::uint16_t kind = u16At(blob, at + 4);
        if (kind == kNames) {
            names = readNames(content);
        } else {
            visit(kind, content, names);
        }
        at += size;
    }
}

}  // namespace

void applyProperties(Bytes blob, TableInfo& table) {
    forBlocks(blob, [&](std::uint16_t kind, Bytes content, const std::vector<std::string>& names) {
        if (kind != kColumn) return;
        std::size_t at = 4;
        const auto column = table.findColumn(nameAt(content, at));
        if (!column) return;
        forEntries(content, names, [&](const std::string& name, Bytes value) {
            applyEntry(name, value, table.columns[*column]);
        });
    });
}

std::optional<std::string> textProperty(Bytes blob, std::string_view wanted) {
    std::optional<std::string> text;
    forBlocks(blob, [&](std::uint16_t kind, Bytes content, const std::vector<std::string>& names) {
        if (kind != kObject) return;
        forEntries(content, names, [&](const std::string& name, Bytes value) {
            if (name == wanted) text = decodeText(value);
        });
    });
    return text;
}

namespace {

void putName(std::string_view name, Blob& out) {
    const std::size_t at = out.size();
    out.resize(at + 2);
    encodeText(base::toUtf16(name), false, out);
    putU16(out, at, static_cast<std::uint16_t>(out.size() - at - 2));
}

void appendBlock(std::uint16_t kind, const Blob& content, Blob& out) {
    const std::size_t at = out.size();
    out.resize(at + kBlockHeader);
    putU32(out, at, static_cast<std::uint32_t>(kBlockHeader + content.size()));
    putU16(out, at + 4, kind);
    out.insert(out.end(), content.begin(), content.end());
}

void appendEntry(ColumnType type, std::size_t name, const Blob& value, Blob& out) {
    const std::size_t at = out.size();
    out.resize(at + kEntryHeader);
    putU16(out, at, static_cast<std::uint16_t>(kEntryHeader + value.size()));
    out[at + 2] = kThroughDefinition;
    out[at + 3] = static_cast<std::uint8_t>(type);
    putU16(out, at + 4, static_cast<std::uint16_t>(name));
    putU16(out, at + 6, static_cast<std::uint16_t>(value.size()));
    out.insert(out.end(), value.begin(), value.end());
}

struct Used {
    bool required = false;
    bool allowZeroLength = false;
    bool defaultValue = false;
};

bool hasText(const ColumnInfo& column) {
    return column.type == ColumnType::Text || column.type == ColumnType::Memo;
}

Used usedBy(const ColumnInfo& column) {
    return {column.required, hasText(column) && !column.allowZeroLength,
            !column.defaultValue.empty()};
}

Blob columnBlock(const ColumnInfo& column, const std::vector<std::string_view>& names) {
    const auto index = [&](std::string_view name) {
        return static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
    };
    const Used used = usedBy(column);
    Blob content(4);
    putName(column.name, content);
    putU32(content, 0, static_cast<std::uint32_t>(content.size()));
    if (used.required) appendEntry(ColumnType::Boolean, index(kRequired), {1}, content);
    if (used.allowZeroLength)
        appendEntry(ColumnType::Boolean, index(kAllowZeroLength), {0}, content);
    if (used.defaultValue) {
        Blob text;
        encodeText(base::toUtf16(column.defaultValue), false, text);
        appendEntry(ColumnType::Memo, index(kDefaultValue), text, content);
    }
    return content;
}

}  // namespace

Blob makeProperties(const TableInfo& table) {
    Used any;
    for (const ColumnInfo& column : table.columns) {
        const Used used = usedBy(column);
        any.required |= used.required;
        any.allowZeroLength |= used.allowZeroLength;
        any.defaultValue |= used.defaultValue;
    }
    std::vector<std::string_view> names;
    if (any.required) names.push_back(kRequired);
    if (any.allowZeroLength) names.push_back(kAllowZeroLength);
    if (any.defaultValue) names.push_back(kDefaultValue);
    if (names.empty()) return {};
    Blob blob(kMagic.begin(), kMagic.end());
    Blob list;
    for (const std::string_view name : names) putName(name, list);
    appendBlock(kNames, list, blob);
    for (const ColumnInfo& column : table.columns) {
        const Used used = usedBy(column);
        if (used.required || used.allowZeroLength || used.defaultValue) {
            appendBlock(kColumn, columnBlock(column, names), blob);
        }
    }
    return blob;
}

}  // namespace stelvan::jet
