// Items as people see them: what the window shows of a record is what is told to others about it.
#pragma once

#include <string_view>

#include "gem/record.h"
#include "model/core/cross_reference.h"

namespace stelvan::model {

/// The texts of an item's fields; those that stand for no value ("NULL") are blank. An item of no
/// category has no fields.
[[nodiscard]] gem::Record shownRecord(const Item& item);

/// "DV", "SV" or "EC"; empty for a variable that is none of them.
[[nodiscard]] std::string_view typeOf(const Item& variable);

/// Whether a flag column of an item is set; Null and what is no flag are not.
[[nodiscard]] bool isSet(const Item& item, std::string_view column);

}  // namespace stelvan::model
