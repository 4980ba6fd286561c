// Values on their way into a column of the file, or the reason why they cannot.
#pragma once

#include <optional>
#include <string>

#include "jet/rows/column_facts.h"

namespace stelvan::model {

/// Makes `value` one of the column's own type, as jet::convertTo does; besides, numbers become
/// dates by their days, hexadecimal digits become bytes, and what is not finite stays so. Nothing
/// where that is done, else why it cannot be: a Null that the column has no way to hold counts as a
/// fault. `value` is undefined then.
[[nodiscard]] std::optional<std::string> fit(const jet::ColumnInfo& column, jet::Value& value);

/// What the column asks of a value of its type that is written: not Null, not empty. Nothing where
/// it is met.
[[nodiscard]] std::optional<std::string> brokenProperty(const jet::ColumnInfo& column,
                                                        const jet::Value& value);

/// Whether two values of one column are the same to the bit.
[[nodiscard]] bool identical(const jet::Value& left, const jet::Value& right);

}  // namespace stelvan::model
