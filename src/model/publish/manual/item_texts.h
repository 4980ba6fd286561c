// The texts of an item as a reader is to see them: placeholders that stand for no value are blank.
#pragma once

#include <string>

#include "gem/record.h"
#include "model/core/cross_reference.h"

namespace stelvan::model::manual {

/// Not for link rows. Flags are "1" and "0", empty where the file has none.
[[nodiscard]] gem::Record textsOf(const Item& item);

}  // namespace stelvan::model::manual
