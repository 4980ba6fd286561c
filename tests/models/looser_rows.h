// Rows changed to what other makers' tables hold of them.
#pragma once

#include <vector>

#include "data/builder/table_text.h"

namespace stelvan::data::test {

/// Texts cut to 255 characters; flags that are -1 or Null here and there, and a variable whose
/// parent is Null.
void loosen(std::vector<TableRows>& tables);

/// Without the columns and tables that the program never asks for.
void dropOptionalColumns(std::vector<TableRows>& tables);

}  // namespace stelvan::data::test
