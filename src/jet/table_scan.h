// Finding rows: one by its id, or all of a table one after the other.
//
// A row's id is its first page and slot. A row that grew stands elsewhere, behind a pointer; its id
// stays.
#pragma once

#include <memory>
#include <optional>

#include "jet/data_page.h"
#include "jet/database.h"
#include "jet/table_def.h"
#include "jet/usage_map.h"

namespace stelvan::jet {

/// A row's bytes and where they are.
struct LocatedRow {
    Bytes bytes;
    RecordPointer target;  // where the bytes stand: the id itself unless the row was moved
};

/// The row of an id, or nothing where the id names no row (any more). Throws Corrupt.
[[nodiscard]] std::optional<LocatedRow> locateRow(PageFile& file, const TableDef& table, RowId id);

/// A data page that must belong to the table. Throws Corrupt.
[[nodiscard]] DataPage readOwnedPage(PageFile& file, PageNumber number, std::uint32_t owner);

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
