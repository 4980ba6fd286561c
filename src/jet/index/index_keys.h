// The bytes under which a row stands in an index.
//
// Each index column gives one part: a flag byte and the value's bytes, so made that comparing the
// bytes of two keys orders them as the index wants. No key is the beginning of another key of the
// same index. Values must already have the column's type (Numeric: the column's scale).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "jet/index/collation.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/value.h"

namespace stelvan::jet {

/// A key, with what the rules about nulls need to know of it.
struct IndexKey {
    std::vector<std::uint8_t> bytes;
    bool anyNull = false;
    bool allNull = false;

    friend bool operator==(const IndexKey& a, const IndexKey& b) { return a.bytes == b.bytes; }
};

class KeyEncoder {
public:
    /// `columns` are the table's, `parts` the index's. Throws UnsupportedOrder where a text column
    /// has an order that cannot be computed.
    KeyEncoder(std::span<const ColumnInfo> columns, std::span<const IndexColumn> parts);

    /// Whether an encoder can be made at all.
    [[nodiscard]] static bool canEncode(std::span<const ColumnInfo> columns,
                                        std::span<const IndexColumn> parts);

    [[nodiscard]] std::size_t partCount() const { return parts_.size(); }

    /// The position in the table's columns from which part `part` takes its value.
    [[nodiscard]] std::size_t column(std::size_t part) const { return parts_[part].column; }

    /// The byte with which the part of a value (not Null) begins.
    [[nodiscard]] std::uint8_t valueFlag(std::size_t part) const;

    /// The key of a row from its values in the order of the index's columns; with fewer values than
    /// parts, the bytes with which every key of such rows begins. Reuses the memory of `key`.
    /// Throws TypeMismatch for a value that is not of the column's type.
    void encode(std::span<const ValueView> values, IndexKey& key) const;

    /// The other key under which some files hold such a row (see ExpansionCount); false where there
    /// is none. Whoever searches or removes an entry must look under it too; entries are never
    /// added under it.
    [[nodiscard]] bool encodeVariant(std::span<const ValueView> values, IndexKey& key) const;

private:
    void encodeCounting(std::span<const ValueView> values, ExpansionCount count,
                        IndexKey& key) const;

    struct Part {
        std::size_t column;
        ColumnType type;
        bool ascending;
    };

    std::vector<Part> parts_;
};

}  // namespace stelvan::jet
