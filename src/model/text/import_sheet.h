// A spreadsheet's table back into a model: items added and changed by identifier, none removed.
//
// The header row tells the kind, by the caption of its identifier; only the equipment's own items
// can be imported. Columns that are missing stay as they are. A variable is told its category by
// the column of types, or by the file's name where that is one of sheetName(). Cells that say what
// sheets.h would write change nothing; an item with any other is judged as the editor judges a
// save, and stored as it stores it.
#pragma once

#include <filesystem>

#include "model/core/model.h"
#include "model/core/write.h"

namespace stelvan::model {

/// The model with the table's items. Throws Refusal with one line for each cell at fault ("FILE,
/// line 12, Variable Max: ..."), and std::runtime_error for a file that cannot be read.
[[nodiscard]] Model withSheet(Model model, const std::filesystem::path& file);

/// Plans to make a file hold the table's items (see planWrite). Throws what withSheet and planWrite
/// throw.
[[nodiscard]] WritePlan planSheet(jet::Database& database, const std::filesystem::path& file);

}  // namespace stelvan::model
