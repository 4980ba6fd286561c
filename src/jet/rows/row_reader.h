// Values of one row after the other: each wanted column is decoded when it is first asked for.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/arena.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_codec.h"
#include "jet/rows/row_layout.h"

namespace stelvan::jet {

class RowReader {
public:
    RowReader(PageFile& file, std::shared_ptr<const RowLayout> table, const ColumnSet& wanted);

    /// Stands on a row; what was given out for the row before becomes invalid.
    void set(Bytes row, PageNumber page);
    /// The value of a column; Null for one that is not wanted. Throws Corrupt, naming the page.
    [[nodiscard]] ValueView value(std::size_t column);
    [[nodiscard]] const RowView& view() const { return view_; }
    [[nodiscard]] const RowLayout& table() const { return *table_; }

private:
    struct Column {
        ColumnPlace place;
        ColumnType type = ColumnType::Boolean;
        bool wanted = false;
        std::uint64_t row = 0;  // the row whose value was decoded last
        ValueView decoded;
    };

    /// Values that take memory are decoded once a row.
    [[nodiscard]] ValueView decodeOnce(std::size_t column, Bytes stored);
    [[nodiscard]] ValueView decode(const ColumnInfo& info, Bytes stored);

    PageFile* file_;
    std::shared_ptr<const RowLayout> table_;
    RowView view_;
    Arena arena_;
    std::uint64_t row_ = 0;
    std::vector<Column> columns_;
};

}  // namespace stelvan::jet
