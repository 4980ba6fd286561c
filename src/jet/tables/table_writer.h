// Inserting, changing and deleting the rows of one table.
//
// Each operation first works out everything that can be refused, without changing a page; then it
// changes long values, row, index entries and counters in a step of its own, so that a fault in the
// middle undoes the whole unit of work. One writer serves a table as long as its definition stays
// the same.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "jet/pages/record_pointer.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/long_value_store.h"
#include "jet/rows/row_draft.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/relationship_link.h"
#include "jet/tables/table_rows.h"
#include "jet/tables/table_scan.h"
#include "jet/tables/table_trees.h"

namespace stelvan::jet {

class TableWriter {
public:
    TableWriter(PageFile& file, std::shared_ptr<const TableDef> table);
    TableWriter(const TableWriter&) = delete;
    TableWriter& operator=(const TableWriter&) = delete;

    /// Each needs a unit of work.
    RowId insert(std::span<const ColumnValue> values);
    /// These give the links whose keys the row no longer has, or newly has: see to them next.
    std::vector<TouchedLink> update(RowId id, std::span<const ColumnValue> values);
    std::vector<TouchedLink> erase(RowId id);

    [[nodiscard]] const std::vector<RelationshipLink>& links() const { return links_; }

private:
    /// Rows that hold a long value which is to be freed.
    struct OldLongValue {
        std::size_t column = 0;
        std::vector<RecordPointer> rows;
    };

    void standOn(RowId id);
    void giveAutoNumbers();
    template <typename Wanted>
    [[nodiscard]] std::vector<OldLongValue> oldLongValues(Wanted&& wanted);
    void free(const std::vector<OldLongValue>& values);
    [[nodiscard]] std::vector<TouchedLink> touchedLinks(bool erased);
    void countRows(bool more);
    void countAutoNumbers();
    /// The value that the row will have.
    [[nodiscard]] ValueView newValue(std::size_t column) {
        return draft_.given(column) ? draft_.value(column) : old_.value(column);
    }

    PageFile* file_;
    std::shared_ptr<const TableDef> table_;
    TableRows rows_;
    TableTrees trees_;
    std::vector<std::optional<LongValueStore>> longValues_;  // by column
    std::vector<RelationshipLink> links_;
    std::vector<std::size_t> autoNumbers_;
    RowDraft draft_;
    RowReader old_;
};

}  // namespace stelvan::jet
