// A new, empty database: the sixteen pages that the engine's own "create database" makes.
#pragma once

#include <cstdint>
#include <vector>

#include "jet/rows/value.h"

namespace stelvan::jet {

/// The bytes of an empty Access 2003 database; `created` goes to the dates of the catalogue's rows.
[[nodiscard]] std::vector<std::uint8_t> makeEmptyDatabase(DateTime created);

}  // namespace stelvan::jet
