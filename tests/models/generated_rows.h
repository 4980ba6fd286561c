// Rows by the hundred that nobody would write out as text.
#pragma once

#include <vector>

#include "data/builder/table_text.h"

namespace stelvan::data::test {

/// 20,000 variables, 5,000 events and alarms, 3,000 reports with their links.
[[nodiscard]] std::vector<TableRows> largeModel();

/// 512 rows in no order, for an index that falls.
[[nodiscard]] std::vector<TableRows> descendingNumbers();

/// One row whose texts and bytes take chains of pages.
[[nodiscard]] std::vector<TableRows> longMemos();

/// Rows of several lengths with many Nulls, enough for pages to be full when some of them grow.
[[nodiscard]] std::vector<TableRows> growingRows();

}  // namespace stelvan::data::test
