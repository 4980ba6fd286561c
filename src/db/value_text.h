// Values as text, flag and number, by the one rule that fields, lists, grid and SQL share.
#pragma once

#include <optional>
#include <string>

#include "jet/rows/value.h"

namespace stelvan::db {

using Value = jet::Value;

/// Whole numbers as plain decimals, fractions with a point in the shortest form that reads back
/// equal, Booleans as "True"/"False", never by locale. Throws RunTimeError 94 for Null.
[[nodiscard]] std::string toText(const Value& value);

/// The same, with the empty text for Null.
[[nodiscard]] std::string toTextOrEmpty(const Value& value);

/// As a check box reads it: any number but 0, "True" in any case, a numeric text other than 0.
/// Throws 94 for Null, 13 for any other text.
[[nodiscard]] bool toFlag(const Value& value);

/// The same, clear for Null.
[[nodiscard]] bool toFlagOrClear(const Value& value);

}  // namespace stelvan::db
