// One row on its way into a table: values given by the caller, converted and checked; the rest from
// the row as it is; then the bytes.
#pragma once

#include <optional>
#include <vector>

#include "jet/rows/column_facts.h"
#include "jet/rows/long_value_store.h"
#include "jet/rows/row_codec.h"
#include "jet/rows/row_layout.h"

namespace stelvan::jet {

class RowDraft {
public:
    explicit RowDraft(const RowLayout& table);

    /// Begins a row of which nothing is given.
    void clear();
    /// Gives columns their values. Throws NoSuchColumn and what convertTo throws.
    void give(std::span<const ColumnValue> values);
    void give(std::size_t column, const Value& value);
    [[nodiscard]] bool given(std::size_t column) const { return given_[column]; }
    /// Null (Boolean: False) where none was given. Lives until the next clear().
    [[nodiscard]] ValueView value(std::size_t column) const;

    /// Throws NullInRequired and ZeroLength; of a new row all columns are judged, otherwise those
    /// given.
    void checkProperties(bool newRow) const;
    /// Makes the stored form. Columns that were not given are taken from `old`. Throws RowTooLarge.
    void encode(const RowView* old);
    /// Stores the long values that do not stand in the row. `stores` by column.
    void storeLongValues(std::vector<std::optional<LongValueStore>>& stores);
    /// The finished row, until the next call.
    [[nodiscard]] Bytes bytes() const { return row_; }

private:
    struct LongValue {
        std::size_t column = 0;
        LongValueData data;
        std::size_t at = 0;  // where its reference stands in the row
    };

    void prepareLongValues();
    void build(const RowView* old);
    /// See RowBuilder.
    [[nodiscard]] bool appendColumn(std::size_t column, const RowView* old, Blob& out);
    void appendLongValue(std::size_t column, Blob& out);
    [[nodiscard]] bool shortenRow();
    [[nodiscard]] std::string fieldName(std::size_t column) const;
    [[nodiscard]] std::span<LongValue> longValues() {
        return std::span(longValues_).first(longCount_);
    }

    const RowLayout* table_;
    std::vector<Value> converted_;
    std::vector<ValueView> values_;
    std::vector<bool> given_;
    std::vector<std::size_t> longColumns_;
    std::vector<LongValue> longValues_;  // more than are given: their memory is used again
    std::size_t longCount_ = 0;          // so many of them are given
    RowBuilder builder_;
    WritableBytes row_;
};

}  // namespace stelvan::jet
