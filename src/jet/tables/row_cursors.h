// The cursors behind Table: all rows, one row, rows in the order of an index.
#pragma once

#include <memory>
#include <vector>

#include "jet/disk/page_file.h"
#include "jet/index/index_tree.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/shared_database.h"
#include "jet/tables/table.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

/// What the cursors have in common: the scope, the definition they read by, the row they stand on.
class RowCursor : public Cursor {
public:
    RowCursor(std::shared_ptr<SharedDatabase> file, std::shared_ptr<const TableDef> table,
              const ColumnSet& wanted);
    ~RowCursor() override;
    RowCursor(const RowCursor&) = delete;
    RowCursor& operator=(const RowCursor&) = delete;

    [[nodiscard]] RowId rowId() const override { return id_; }
    [[nodiscard]] ValueView value(std::size_t column) override { return reader_.value(column); }

protected:
    void stand(RowId id, const LocatedRow& row) {
        id_ = id;
        reader_.set(row.bytes, row.target.page);
    }
    [[nodiscard]] PageFile& pages() { return file_->pages(); }
    [[nodiscard]] const TableDef& table() const { return *table_; }
    /// Lets go of pages read long ago, unless another cursor still looks at some.
    void releasePages(std::size_t read);

private:
    std::shared_ptr<SharedDatabase> file_;
    ReadScope scope_;
    std::shared_ptr<const TableDef> table_;
    RowReader reader_;
    RowId id_;
};

[[nodiscard]] std::unique_ptr<Cursor> makeScanCursor(std::shared_ptr<SharedDatabase> file,
                                                     std::shared_ptr<const TableDef> table,
                                                     const ColumnSet& wanted);
/// Null where the row is gone.
[[nodiscard]] std::unique_ptr<Cursor> makeRowCursor(std::shared_ptr<SharedDatabase> file,
                                                    std::shared_ptr<const TableDef> table, RowId id,
                                                    const ColumnSet& wanted);

/// Rows in the order of the entries that `entries` give, one after the other.
[[nodiscard]] std::unique_ptr<Cursor> makeIndexCursor(std::shared_ptr<SharedDatabase> file,
                                                      std::shared_ptr<const TableDef> table,
                                                      std::vector<TreeCursor> entries,
                                                      const ColumnSet& wanted);
/// No rows at all.
[[nodiscard]] std::unique_ptr<Cursor> makeEmptyCursor();

}  // namespace stelvan::jet
