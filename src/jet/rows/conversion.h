// Values on their way into a column: exact or not at all. Nothing is cut or turned into zero or
// Null; only binary fractions take the nearest value that a Single, Double or Currency column can
// hold.
#pragma once

#include <optional>
#include <string_view>

#include "jet/rows/column_facts.h"
#include "jet/rows/value.h"

namespace stelvan::jet {

/// `value` as one of the column's own type. Text becomes a number in C notation after trimming
/// blanks, or a date that it shows as "YYYY-MM-DD", alone or with "hh:mm:ss" behind a blank or T;
/// flags become -1 and 0, numbers become flags by being other than 0; Null stays Null (Boolean:
/// False). Throws TypeMismatch (no number, a fraction for whole numbers, bytes for text ...),
/// NumericOverflow and TextTooLong, about the column's name.
[[nodiscard]] Value convertTo(const ColumnInfo& column, Value value);

/// The same for a column of a table; failures are about "Table.column".
[[nodiscard]] Value convertTo(const TableInfo& table, std::size_t column, Value value);

/// The flag that a value stands for: any number but 0, the words True and False in any case, a
/// numeric text by its value. Nothing for Null and all else.
[[nodiscard]] std::optional<bool> flagOf(const Value& value);

}  // namespace stelvan::jet
