// Columns and indexes as the tests of whole databases make them.
#pragma once

#include <string>
#include <utility>

#include "jet/rows/column_facts.h"

namespace stelvan::test {

inline jet::ColumnInfo column(std::string name, jet::ColumnType type, std::uint16_t length = 0) {
    jet::ColumnInfo info;
    info.name = std::move(name);
    info.type = type;
    info.length = length;
    info.compressed = true;
    return info;
}

inline jet::IndexInfo index(std::string name, std::size_t onColumn, bool primary = false) {
    jet::IndexInfo info;
    info.name = std::move(name);
    info.columns = {{onColumn, true}};
    info.primary = primary;
    info.unique = primary;
    return info;
}

}  // namespace stelvan::test
