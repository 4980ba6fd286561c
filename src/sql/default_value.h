// The default value that a column's property states.
#pragma once

#include "jet/database.h"
#include "jet/rows/value.h"

namespace stelvan::sql {

/// The value of a constant expression (number, quoted text, Yes/No, True/False, Null), as the
/// column's own type. Null where there is none, where it must be computed (Now(), GenGUID()), and
/// for AutoNumber columns; a Yes/No column is never Null.
[[nodiscard]] jet::Value defaultValue(const jet::ColumnInfo& column);

}  // namespace stelvan::sql
