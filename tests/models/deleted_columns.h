// A column deleted as the vendor's engine deletes one: the definition forgets it, the rows keep its
// bytes, and its number is not given out again.
#pragma once

#include <filesystem>
#include <string>

#include "jet/database.h"

namespace stelvan::data::test {

/// No index may use the column, and it may hold no long values.
void deleteColumn(const std::filesystem::path& path, const std::string& table,
                  const std::string& column);

/// The table as it looks from then on.
void forgetColumn(jet::TableSpec& table, const std::string& column);

}  // namespace stelvan::data::test
