// Pages that stand at the same place in every database.
//
//   PAGE  HOLDS
//      0  the header
//      1  the map of free pages (row 0), and a second one that is always empty
//   2..5  the definitions of the system tables
//      6  the first page of usage maps
#pragma once

#include <cstdint>

#include "jet/disk/page.h"

namespace stelvan::jet {

inline constexpr PageNumber kGlobalMapPage = 1;
inline constexpr std::uint8_t kGlobalMapRow = 0;
inline constexpr PageNumber kObjectsPage = 2;        // MSysObjects
inline constexpr PageNumber kAccessEntriesPage = 3;  // MSysACEs
inline constexpr PageNumber kQueriesPage = 4;        // MSysQueries
inline constexpr PageNumber kRelationshipsPage = 5;  // MSysRelationships
inline constexpr PageNumber kFirstUsageMapPage = 6;

}  // namespace stelvan::jet
