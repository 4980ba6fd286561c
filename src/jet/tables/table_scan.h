// Finding rows: one by its id, or all of a table one after the other.
//
// A row's id is its first page and slot. A row that grew stands elsewhere, behind a pointer; its id
// stays.
#pragma once

#include <memory>
#include <optional>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/data_page.h"
#include "jet/pages/record_pointer.h"
#include "jet/pages/usage_map.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// A row's bytes and where they are.
struct LocatedRow {
    Bytes bytes;
    RecordPointer target;  // where the bytes stand: the id itself unless the row was moved
};

/// The row of an id, or nothing where the id names no row (any more). Throws Corrupt.
[[nodiscard]] std::optional<LocatedRow> locateRow(PageFile& file, const TableDef& table, RowId id);

class TableScan {
public:
    TableScan(PageFile& file, const TableDef& table) : file_(&file), table_(&table) {}

    /// Moves to the next row; false after the last.
    bool next();
    /// Called before a page is read, with the number of pages read so far, so that memory can be
    /// released.
    template <typename Release>
    bool next(Release&& release) {
        while (!nextOnPage()) {
            release(pages_);
            if (!nextPage()) return false;
        }
        return true;
    }

    [[nodiscard]] RowId id() const {
        return {page_->number(), static_cast<std::uint8_t>(slot_ - 1)};
    }
    [[nodiscard]] const LocatedRow& row() const { return row_; }

private:
    bool nextOnPage();
    bool nextPage();

    PageFile* file_;
    const TableDef* table_;
    std::optional<DataPage> page_;
    std::size_t slot_ = 0;
    PageNumber from_ = 0;
    std::size_t pages_ = 0;
    LocatedRow row_;
};

}  // namespace stelvan::jet
