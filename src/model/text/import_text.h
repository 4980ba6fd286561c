// Making a file equal to texts.
#pragma once

#include "model/core/write.h"
#include "model/text/read_text.h"

namespace stelvan::model {

/// Plans it (see planWrite), with messages that say where in the texts a fault stands. Throws
/// Refusal as planWrite does, and where the file has a table of which the texts do not tell: its
/// rows would go without anybody having said so.
[[nodiscard]] WritePlan planImport(jet::Database& database, ModelText text);

}  // namespace stelvan::model
