// The rows of one table on its pages: a row that outgrows its page moves, and leaves a pointer
// behind.
#pragma once

#include <vector>

#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"
#include "jet/pages/slot_store.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"

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
