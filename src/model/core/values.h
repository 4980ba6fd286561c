// What values of a model stand for, whatever their column's type: files differ in those.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

#include "jet/rows/value.h"

namespace stelvan::model {

/// The whole number that a value is: any number without a fraction, or a text that is one. Nothing
/// for Null and all else.
[[nodiscard]] std::optional<std::int64_t> wholeNumber(const jet::Value& value);

/// Whether two values say the same: numbers by their value, whatever their types (a flag is 0 or
/// not 0), texts exactly; Null equals only Null, and an empty text is not Null. What has types of
/// two kinds (a date beside a text) is compared as text.
[[nodiscard]] bool sameValue(const jet::Value& left, const jet::Value& right);

/// An order of values: Null, then numbers by value, then all else by its text's bytes.
[[nodiscard]] std::weak_ordering compareValues(const jet::Value& left, const jet::Value& right);

}  // namespace stelvan::model
