// Whole numbers as texts of a model name them: identifiers, targets and places of links.
#pragma once

#include <cstdint>
#include <optional>

#include "jet/rows/value.h"

namespace stelvan::model {

/// The whole number that a value is, where its plain digits are all that the value says: of " 7 "
/// they are not.
[[nodiscard]] std::optional<std::int64_t> wholeNumberAsWritten(const jet::Value& value);

/// A whole number as a value: an integer where it fits one, else a decimal.
[[nodiscard]] jet::Value wholeValue(std::int64_t number);

}  // namespace stelvan::model
