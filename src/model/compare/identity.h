// Which rows of two models are the same item or link.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/core/model.h"

namespace stelvan::model {

/// What tells items apart, whatever the column's type: a whole number by its value, all else by its
/// text. Nulls come first, then numbers, then texts.
struct Key {
    enum class Kind : std::uint8_t { Null, Number, Text };
    Kind kind = Kind::Null;
    std::int64_t number = 0;
    std::string text;

    friend auto operator<=>(const Key&, const Key&) = default;
};

[[nodiscard]] Key keyOf(const jet::Value& value);

/// A row under its identifier; `place` is the number of a limit and Null for all else.
struct KeyedRow {
    Key id;
    Key place;
    const Row* row = nullptr;

    [[nodiscard]] bool sameItem(const KeyedRow& other) const {
        return id == other.id && place == other.place;
    }
};

/// The rows of a part in the order of their keys, doubles as they stand. They point into `table`.
[[nodiscard]] std::vector<KeyedRow> keyedRows(Part part, const Table& table);

/// Takes the rows of one owner from the front of link rows, none where others stand there.
[[nodiscard]] std::span<const KeyedRow> takeOwner(std::span<const KeyedRow>& rows,
                                                  const Key& owner);

/// A column by where it stands on either side.
struct ColumnPair {
    std::string name;  // as the second side spells it, if it has it
    std::optional<std::size_t> before;
    std::optional<std::size_t> after;
};

/// Every column of either side: those of the first, then what only the second has.
[[nodiscard]] std::vector<ColumnPair> columnPairs(const Table& before, const Table& after);

/// The value of a row that may be missing, in a column that may be missing: Null then.
[[nodiscard]] const jet::Value& valueAt(const Row* row, std::optional<std::size_t> column);

/// Whether two rows say the same in all columns.
[[nodiscard]] bool sameRow(std::span<const ColumnPair> columns, const Row& before,
                           const Row& after);

/// One item on both sides, or on the one that has it.
struct RowPair {
    Key id;
    Key place;
    const Row* before = nullptr;
    const Row* after = nullptr;
};

/// Every item of either side, in the order of keys. Both lists are as keyedRows gives them.
[[nodiscard]] std::vector<RowPair> pairRows(Part part, const Table& before, const Table& after,
                                            std::span<const KeyedRow> beforeRows,
                                            std::span<const KeyedRow> afterRows);
[[nodiscard]] std::vector<RowPair> pairRows(Part part, const Table& before, const Table& after);

}  // namespace stelvan::model
