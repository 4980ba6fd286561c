// What a model must hold, as JSON lines, from its texts alone: the engine has no part in it.
#pragma once

#include <filesystem>
#include <vector>

#include "data/builder/schema_text.h"
#include "data/builder/table_text.h"

namespace stelvan::data::test {

/// Writes `path`.jsonl (a line for each row) and `path`.schema.jsonl (a line for each table and
/// relationship), in the form in which `gemdb dump` and `gemdb schema` print them.
void writeExpected(const std::filesystem::path& path, const Schema& schema,
                   const std::vector<TableRows>& tables);

}  // namespace stelvan::data::test
