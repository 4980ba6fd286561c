// Makes an Access file from a schema and rows: the same texts give the same bytes.
#pragma once

#include <filesystem>
#include <span>

#include "data/builder/schema_text.h"
#include "data/builder/table_text.h"

namespace stelvan::model {

/// Creates `path`, which must not exist, with all tables and rows; rows of one table may come in
/// several parts and keep their order. Throws std::runtime_error (no such column) and jet::Error
/// (no such table, a cell that its column cannot take); nothing is left behind then.
void buildModel(const std::filesystem::path& path, const Schema& schema,
                std::span<const TableRows> tables);

}  // namespace stelvan::model
