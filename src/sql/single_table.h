// SELECTs whose rows are rows of one table, so that a record set can hold their places instead of
// their values.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "jet/database.h"
#include "sql/dialect.h"

namespace stelvan::sql {

/// "SELECT * | columns FROM table [WHERE ...] [ORDER BY ...]".
struct SingleTableSelect {
    std::vector<std::size_t> columns;  // positions in the table, in the order of the list
    std::size_t from = 0;              // position of FROM among the tokens
    bool everyRow = false;             // neither WHERE nor ORDER BY
    bool ordered = false;
};

/// The column that the tokens [begin, end) name: "column", "table.column".
[[nodiscard]] std::optional<std::size_t> columnNamed(const Statement& statement,
                                                     const jet::TableInfo& table, std::size_t begin,
                                                     std::size_t end);

/// Nothing for any other statement, and for one that names a column which the table does not have.
[[nodiscard]] std::optional<SingleTableSelect> asSingleTable(const Statement& statement,
                                                             const jet::TableInfo& table);

/// The same statement, selecting the rows' places.
[[nodiscard]] Tokens selectingPlaces(const Statement& statement, const SingleTableSelect& select);

/// The same statement for one place, which is its parameter: a row where it would choose it.
[[nodiscard]] Tokens judgingPlace(const Statement& statement, const SingleTableSelect& select);

}  // namespace stelvan::sql
