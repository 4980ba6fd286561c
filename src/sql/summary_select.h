// SELECTs of one value that the file engine knows without reading the rows: COUNT(*), and MAX or
// MIN of a column that an index begins with, over a whole table.
#pragma once

#include <optional>

#include "jet/database.h"
#include "sql/dialect.h"

namespace stelvan::sql {

/// The value of "SELECT COUNT(*) FROM table", "SELECT MAX(column) FROM table" or "SELECT
/// MIN(column) FROM table", as SQL sees it. Nothing for any other statement, and where the rows
/// have to be read for it. `table` is the statement's only one. Throws jet::Error.
[[nodiscard]] std::optional<jet::Value> summaryOf(const Statement& statement, jet::Table& table);

}  // namespace stelvan::sql
