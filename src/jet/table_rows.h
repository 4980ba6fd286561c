// The rows of one table on its pages: a row that outgrows its page moves, and leaves a pointer
// behind.
#pragma once

#include <vector>

#include "jet/database.h"
#include "jet/slot_store.h"
#include "jet/table_def.h"

namespace stelvan::jet {

class TableRows {
public:
    TableRows(PageFile& file, const TableDef& table)
        : file_(&file), table_(&table), store_(file, table.page, table.ownedMap, table.freeMap) {}

    [[nodiscard]] RowId add(Bytes row);
    /// Gives a row other content; its id stays, and it moves back to its first page when it fits
    /// again.
    void replace(RowId id, Bytes row);
    void remove(RowId id);

private:
    [[nodiscard]] std::vector<RecordPointer> targetsOf(RowId id) const;
    void removeAll(const std::vector<RecordPointer>& rows);

    PageFile* file_;
    const TableDef* table_;
    SlotStore store_;
};

}  // namespace stelvan::jet
