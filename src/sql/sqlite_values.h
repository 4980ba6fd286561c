// Values between the file engine and SQLite.
//
// SQL sees flags as -1 and 0, currency, decimals and dates as numbers, GUIDs as text.
#pragma once

#include <sqlite3.h>

#include <optional>

#include "jet/database.h"
#include "jet/rows/value.h"

namespace stelvan::sql {

/// Hands a value to SQLite (texts and bytes are copied).
void giveResult(sqlite3_context* context, const jet::ValueView& value);

/// What SQLite computed: Null, whole numbers as std::int32_t where they fit and double where not,
/// double, text, bytes.
[[nodiscard]] jet::Value takeValue(sqlite3_value* value);

/// A value of a result column that shows a table's column: as the column's own type again.
[[nodiscard]] jet::Value takeColumnValue(sqlite3_value* value, jet::ColumnType type);

/// The key value with which an index on `column` finds what equals `value`; nothing when no stored
/// value can.
[[nodiscard]] std::optional<jet::Value> keyValue(sqlite3_value* value,
                                                 const jet::ColumnInfo& column);
/// Whether keyValue can be trusted for this type: what is compared as a rounded number is scanned
/// for.
[[nodiscard]] bool hasExactKeys(const jet::ColumnInfo& column);

/// The column's type as a word of the declaration given to SQLite (which draws the affinity from
/// it), and back; nothing for words that are none.
[[nodiscard]] const char* declaredType(jet::ColumnType type);
[[nodiscard]] std::optional<jet::ColumnType> typeDeclaredAs(const char* declared);

}  // namespace stelvan::sql
