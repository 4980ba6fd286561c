#include "model/check/standard_items.h"

namespace stelvan::model {
namespace {

jet::Value valueOf(std::string_view cell) {
    return cell.data() == nullptr ? jet::Value() : jet::Value(std::string(cell));
}

}  // namespace

Table standardItems(Part part) {
    Table table;
    for (const StandardTable& standard : standardTables()) {
        if (standard.table != factsOf(part).table) continue;
        table.present = true;
        table.name = standard.table;
        table.columns.assign(standard.columns.begin(), standard.columns.end());
        const std::size_t width = standard.columns.size();
        for (std::size_t first = 0; first < standard.cells.size(); first += width) {
            Row& row = table.rows.emplace_back();
            for (const std::string_view cell : standard.cells.subspan(first, width))
                row.values.push_back(valueOf(cell));
        }
    }
    return table;
}

}  // namespace stelvan::model
