#include "model/core/new_rows.h"

namespace stelvan::model {

void switchOffUnsaidFlags(jet::Database& database, Model& model) {
    for (const PartFacts& facts : parts()) {
        const auto name = tableOf(facts.part, database);
        if (!name) continue;
        Table& table = model[facts.part];
        for (const jet::ColumnInfo& column : database.table(*name).info().columns) {
            const auto at = table.find(column.name);
            if (column.type != jet::ColumnType::Boolean || !at) continue;
            for (Row& row : table.rows)
                if (jet::isNull(row.values[*at])) row.values[*at] = false;
        }
    }
}

}  // namespace stelvan::model
