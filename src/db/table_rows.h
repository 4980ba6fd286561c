// Rows of one table, read when they are looked at and written through.
//
// Reading goes by the opening that the record set was made on. Writing and looking anew open the
// file again by its name, so that a file put in the place of the old one is never mistaken for it.
#pragma once

#include <memory>

#include "db/open_database.h"
#include "db/row_source.h"

namespace stelvan::db {

class TableRows final : public RowSource, public RowWriter {
public:
    /// `sql` chose rows of the table; `columns` are positions in it, one for each field.
    TableRows(std::shared_ptr<OpenDatabase> database, std::string sql, const std::string& table,
              jet::ColumnSet columns);

    [[nodiscard]] const std::vector<std::string>& fields() const override { return fields_; }
    [[nodiscard]] RowsNow read(std::span<const jet::RowId> places,
                               std::optional<std::uint64_t> chosen) override;
    [[nodiscard]] PlacesNow chosenNow() override;
    [[nodiscard]] RowWriter* writer() override { return this; }

    [[nodiscard]] jet::Value converted(std::size_t field, jet::Value value) override;
    [[nodiscard]] Row newRow() override;
    jet::RowId insert(const Row& row) override;
    void update(const KnownRow& row, const std::vector<FieldChange>& changes) override;
    void erase(const KnownRow& row) override;
    void onRollback(std::function<void()> undo) override {
        database_->database().onRollback(std::move(undo));
    }

private:
    /// Opens the file anew. Throws when the table no longer has the columns it was read with.
    void reopen();
    [[nodiscard]] jet::Table& table() { return *table_; }
    [[nodiscard]] std::optional<Row> readOne(jet::RowId place);
    void requireUnchanged(const KnownRow& row);

    std::shared_ptr<OpenDatabase> database_;
    std::string sql_;
    jet::Table* table_;    // owned by database_
    jet::TableInfo info_;  // as it was when the rows were selected
    jet::ColumnSet columns_;
    std::vector<std::string> fields_;
};

}  // namespace stelvan::db
