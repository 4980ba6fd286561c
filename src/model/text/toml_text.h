// Names and values as TOML spells them: always the same for the same value, so that texts can be
// compared, and exact: what is read back is what was written.
#pragma once

#include <string>
#include <string_view>

#include "jet/rows/value.h"

namespace stelvan::model {

/// `text` as a basic string on one line, quotes included; appended to `out`. It must hold no half
/// of a surrogate pair.
void appendTomlString(std::string& out, std::string_view text);

/// A key, in quotes where it needs them. Throws Refusal for a name that holds half a surrogate
/// pair.
void appendTomlKey(std::string& out, std::string_view name);

/// A value other than Null. Whole numbers of every type are integers, so that files whose columns
/// differ in type give the same text; decimals of more than 15 digits, which a TOML reader may
/// round, are texts, as are GUIDs, and bytes as hexadecimal digits. A date is a local date-time
/// where that says it to the bit, else its number of days. Texts: see kEscapedKey.
void appendTomlValue(std::string& out, const jet::Value& value);

/// The text that stands in a table {escaped = ...}; false where it is none.
[[nodiscard]] bool unescape(std::string_view escaped, std::string& text);

}  // namespace stelvan::model
