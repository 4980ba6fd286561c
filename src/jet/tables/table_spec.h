// Tables and relationships as their makers ask for them, and as the catalogue tells of them.
#pragma once

#include <string>
#include <vector>

#include "jet/rows/column_facts.h"

namespace stelvan::jet {

/// What a new table is made of; column numbers and lengths of types of natural size may be left
/// out.
struct TableSpec {
    std::string name;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;
};

struct RelationshipInfo {
    std::string name;
    std::string parentTable;
    std::vector<std::string> parentColumns;
    std::string childTable;
    std::vector<std::string> childColumns;
    bool enforced = false;
    bool cascadeUpdates = false;
    bool cascadeDeletes = false;
};

}  // namespace stelvan::jet
