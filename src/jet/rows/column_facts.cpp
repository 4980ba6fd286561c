#include "jet/rows/column_facts.h"

#include <numeric>

#include "jet/rows/text.h"

namespace stelvan::jet {

std::optional<std::size_t> TableInfo::findColumn(std::string_view columnName) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (sameName(columns[i].name, columnName)) return i;
    }
    return std::nullopt;
}

ColumnSet allColumns(const TableInfo& info) {
    ColumnSet all(info.columns.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

std::optional<std::uint16_t> naturalSize(ColumnType type) {
    switch (type) {
        case ColumnType::Boolean:
        case ColumnType::Byte:
            return 1;
        case ColumnType::Integer:
            return 2;
        case ColumnType::Long:
        case ColumnType::Single:
            return 4;
        case ColumnType::Money:
        case ColumnType::Double:
        case ColumnType::DateTime:
            return 8;
        case ColumnType::Guid:
            return 16;
        case ColumnType::Numeric:
            return 17;
        default:
            return std::nullopt;
    }
}

}  // namespace stelvan::jet
