// Rows: where each column's bytes stand in a row, and what they mean.
//
// A RowView finds the stored bytes of single columns without touching the others; decodeStored
// turns them into values. Long values (Memo, Ole) give the bytes of their reference, see
// long_value.h.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/pages/arena.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"
#include "jet/rows/value.h"

namespace stelvan::jet {

/// Where a column stands in a row, in a few bytes.
struct ColumnPlace {
    std::uint16_t number = 0;
    std::uint16_t at = 0;  // fixed: offset in the fixed part; variable: index
    std::uint16_t size = 0;
    bool fixed = false;
};
[[nodiscard]] inline ColumnPlace placeOf(const RowLayout& table, std::size_t column) {
    const ColumnStorage& storage = table.storage[column];
    const bool fixed = table.isFixed(column);
    return {table.info.columns[column].number, fixed ? storage.fixedOffset : storage.variableIndex,
            storage.size, fixed};
}

class RowView {
public:
    RowView() = default;
    /// Throws Corrupt (naming `page`) for a row too short for what it claims.
    RowView(const RowLayout& table, Bytes row, PageNumber page);

    /// The stored bytes of a column, or nothing where it is null. Boolean columns: use flag().
    [[nodiscard]] std::optional<Bytes> stored(std::size_t column) const {
        return stored(placeOf(*table_, column));
    }
    [[nodiscard]] std::optional<Bytes> stored(const ColumnPlace& place) const {
        if (!maskBit(place.number)) return std::nullopt;
        return place.fixed ? storedFixed(place) : storedVariable(place.at);
    }
    /// A Boolean column's value.
    [[nodiscard]] bool flag(const ColumnPlace& place) const { return maskBit(place.number); }
    [[nodiscard]] bool flag(std::size_t column) const {
        return maskBit(table_->info.columns[column].number);
    }
    [[nodiscard]] PageNumber page() const { return page_; }

private:
    [[nodiscard]] bool maskBit(std::size_t number) const {
        return number < columns_ && (row_[mask_ + number / 8] >> (number % 8) & 1) != 0;
    }
    [[nodiscard]] Bytes storedFixed(const ColumnPlace& place) const;
    [[nodiscard]] std::optional<Bytes> storedVariable(std::size_t index) const;

    const RowLayout* table_ = nullptr;
    Bytes row_;
    PageNumber page_ = 0;
    std::size_t columns_ = 0;    // when the row was written
    std::size_t mask_ = 0;       // offset of the null mask
    std::size_t variables_ = 0;  // when the row was written
    std::size_t count_ = 0;      // offset of the number of variable columns
};

// In the header because a scan asks them for every value of every row.
inline Bytes RowView::storedFixed(const ColumnPlace& place) const {
    const std::size_t begin = std::size_t{row::kFixed} + place.at;
    if (begin + place.size > mask_) throwCorrupt(page_, "a row ends within its fixed part.");
    return row_.subspan(begin, place.size);
}

inline std::optional<Bytes> RowView::storedVariable(std::size_t index) const {
    if (index >= variables_) return std::nullopt;
    const std::size_t tableSize = 2 * (index + 2);
    if (tableSize > count_) throwCorrupt(page_, "a row claims too many variable columns.");
    const std::size_t begin = u16At(row_, count_ - 2 * (index + 1));
    const std::size_t end = u16At(row_, count_ - tableSize);
    if (begin > end || end > count_) throwCorrupt(page_, "a row's column does not lie within it.");
    return row_.subspan(begin, end - begin);
}

/// The value of stored bytes; not for Boolean, Memo and Ole. Texts that need decoding go to
/// `arena`. Throws Corrupt (without a page) for bytes of the wrong length.
[[nodiscard]] ValueView decodeStored(const ColumnInfo& column, Bytes stored, Arena& arena);

/// Text of any stored form, in place or in `arena`.
[[nodiscard]] std::string_view decodeTextTo(Arena& arena, Bytes stored);

/// Appends the stored form of a value that is of the column's own type; not for Boolean, Memo, Ole.
void encodeStored(const ColumnInfo& column, const ValueView& value, Blob& out);

/// Builds rows of one table, one after the other, each with the table's present numbers of columns.
class RowBuilder {
public:
    /// The table must outlive the object.
    explicit RowBuilder(const RowLayout& table);

    /// A row whose columns `append(column, Blob& out)` gives: it appends the stored bytes of a
    /// column and says whether the column has a value (Boolean: the value itself). Where the row
    /// ends beyond row::kMaxSize it is of no use but for its size. Lives until the next call.
    template <typename Append>
    WritableBytes build(Append&& append);

private:
    static constexpr std::size_t kNoColumn = ~std::size_t{0};  // of an index without a column

    void begin();
    void finish();
    void setPresent(std::size_t column) {
        const std::size_t number = table_->info.columns[column].number;
        mask_[number / 8] |= static_cast<std::uint8_t>(1u << (number % 8));
    }

    const RowLayout* table_;
    std::vector<std::size_t> fixed_;     // columns
    std::vector<std::size_t> variable_;  // columns by their index
    Blob row_;
    Blob single_;                        // the bytes of a fixed column
    std::vector<std::uint16_t> starts_;  // of the variable columns
    std::vector<std::uint8_t> mask_;
};

template <typename Append>
WritableBytes RowBuilder::build(Append&& append) {
    begin();
    for (const std::size_t column : fixed_) {
        single_.clear();
        if (!append(column, single_)) continue;
        setPresent(column);
        std::ranges::copy(single_,
                          row_.begin() + static_cast<std::ptrdiff_t>(
                                             row::kFixed + table_->storage[column].fixedOffset));
    }
    for (std::size_t v = 0; v < variable_.size(); ++v) {
        starts_[v] = static_cast<std::uint16_t>(row_.size());
        if (variable_[v] != kNoColumn && append(variable_[v], row_)) setPresent(variable_[v]);
    }
    finish();
    return row_;
}

}  // namespace stelvan::jet
