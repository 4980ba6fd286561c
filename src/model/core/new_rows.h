// What rows that no file has held yet say in columns of which nobody spoke.
#pragma once

#include "jet/database.h"
#include "model/core/model.h"

namespace stelvan::model {

/// Flags that are Null become off, as the file itself would have it in a new row: such a column
/// cannot hold a Null, so no row that was read from the file is touched.
void switchOffUnsaidFlags(jet::Database& database, Model& model);

}  // namespace stelvan::model
