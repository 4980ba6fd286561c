// The stored form of a table's definition: lengths, marks, numbers, names and references within it.
#pragma once

#include <string>

#include "jet/check/check_log.h"
#include "jet/check/check_pages.h"
#include "jet/disk/page_file.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// Claims the definition's pages and reports what is wrong with them. The definition could be
/// decoded.
void checkDefinition(PageFile& file, const std::string& name, const TableDef& table,
                     PageBook& pages, CheckLog& log);

}  // namespace stelvan::jet
