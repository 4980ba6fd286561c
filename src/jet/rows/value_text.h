// Values as text, by the one rule that display, SQL and conversions share; never by locale.
#pragma once

#include <string>

#include "jet/rows/value.h"

namespace stelvan::jet {

/// Whole numbers as plain decimals, fractions with a point in the shortest form that reads back
/// equal, Booleans as "True"/"False", dates as "YYYY-MM-DD hh:mm:ss", GUIDs braced, bytes as
/// hexadecimal digits. Null is the empty text.
[[nodiscard]] std::string textOf(const Value& value);

}  // namespace stelvan::jet
