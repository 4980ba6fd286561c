// One table of an open database: finds its definition afresh for each call, and hands the work on.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "jet/disk/page.h"
#include "jet/index/index_keys.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/shared_database.h"
#include "jet/tables/table.h"

namespace stelvan::jet {

class StoredTable final : public Table {
public:
    StoredTable(std::shared_ptr<SharedDatabase> file, Access access, std::string name)
        : file_(std::move(file)), access_(access), name_(std::move(name)) {}

    [[nodiscard]] const TableInfo& info() override;
    [[nodiscard]] std::unique_ptr<Cursor> scan(ColumnSet wanted) override;
    [[nodiscard]] std::unique_ptr<Cursor> find(std::size_t index, std::span<const Value> key,
                                               ColumnSet wanted) override;
    [[nodiscard]] std::unique_ptr<Cursor> inOrder(std::size_t index, ColumnSet wanted) override;
    [[nodiscard]] std::uint64_t count() override;
    [[nodiscard]] std::optional<Value> extreme(std::size_t index, Extreme which) override;
    [[nodiscard]] std::unique_ptr<Cursor> row(RowId id, ColumnSet wanted) override;
    RowId insert(std::span<const ColumnValue> values) override;
    void update(RowId id, std::span<const ColumnValue> values) override;
    void erase(RowId id) override;

    /// The definition as the file holds it now. Needs a scope. Throws NoSuchTable, Corrupt.
    [[nodiscard]] const std::shared_ptr<const TableDef>& definition();

private:
    /// Runs a change of the table in the open unit of work, or in one of its own.
    template <typename Change>
    auto change(Change&& apply);
    [[nodiscard]] const IndexInfo& indexAt(std::size_t index);
    /// The keys under which rows with these values may stand; none where a value cannot be of its
    /// column's type.
    [[nodiscard]] std::vector<IndexKey> keysOf(const IndexInfo& index,
                                               std::span<const Value> values);

    std::shared_ptr<SharedDatabase> file_;
    Access access_;
    std::string name_;
    std::uint64_t generation_ = 0;
    std::shared_ptr<const TableDef> definition_;
    std::uint64_t infoGeneration_ = 0;
    TableInfo info_;
};

}  // namespace stelvan::jet
