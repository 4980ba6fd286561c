// What can be said of all rows of a table without reading them: how many there are, and the least
// and the greatest value of a column that an index begins with.
//
// An index answers only where it proves itself. The number of its entries counts as the number of
// rows where the definition's own count says the same; an extreme counts where the row that the
// entry names has a value that makes this very entry. Where they disagree, rows are counted one by
// one, and the extreme is left to whoever reads the rows.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "jet/disk/page_file.h"
#include "jet/index/index_tree.h"
#include "jet/tables/table.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// Needs a scope for as long as it is used.
class TableSummary {
public:
    TableSummary(PageFile& file, std::shared_ptr<const TableDef> table)
        : file_(file), table_(std::move(table)) {}

    /// `release` is called now and then: pages read so far are not needed any more. Throws Corrupt.
    [[nodiscard]] std::uint64_t rows(const std::function<void()>& release) const;

    /// See Table::extreme(). Throws Corrupt.
    [[nodiscard]] std::optional<Value> extreme(const IndexInfo& index, Extreme which) const;

private:
    [[nodiscard]] IndexTree treeOf(std::size_t position) const {
        return {file_, table_->trees[position].root, table_->page};
    }
    [[nodiscard]] std::optional<std::uint64_t> entries(const std::function<void()>& release) const;
    [[nodiscard]] std::uint64_t countedRows(const std::function<void()>& release) const;
    /// Nothing where the row is gone.
    [[nodiscard]] std::optional<Value> valueIn(RowId row, std::size_t column) const;

    PageFile& file_;
    std::shared_ptr<const TableDef> table_;
};

}  // namespace stelvan::jet
