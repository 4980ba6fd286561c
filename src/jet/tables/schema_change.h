// Creating and dropping tables and relationships. Each checks first, then changes in a step of its
// own.
#pragma once

#include <string_view>

#include "jet/tables/shared_database.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

/// `now` goes to the dates of the catalogue's new rows. All need a unit of work.
void createTable(SharedDatabase& file, const TableSpec& spec, DateTime now);
void dropTable(SharedDatabase& file, std::string_view name);
void createRelationship(SharedDatabase& file, const RelationshipInfo& relationship, DateTime now);

}  // namespace stelvan::jet
