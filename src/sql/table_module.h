// A table of the file as SQLite sees it: read by scan, index or place, written row by row.
//
// Each is registered as a module of the table's own name, so that naming it in a statement is
// enough. A row's number is its place in the file. What the file engine throws is kept for the
// caller and rethrown by it; SQLite only learns that the statement failed.
#pragma once

#include <sqlite3.h>

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "jet/database.h"
#include "sql/access_plan.h"

namespace stelvan::sql {

/// What a callback could not throw through SQLite.
struct CaughtFailure {
    std::exception_ptr exception;
};

class TableModule {
public:
    /// References must outlive the object, and the object `handle`'s use of the table.
    TableModule(jet::Table& table, CaughtFailure& failure) : table_(table), failure_(failure) {}
    TableModule(const TableModule&) = delete;
    TableModule& operator=(const TableModule&) = delete;

    /// Makes the table known as the file defines it now, and forgets plans of former statements.
    void declareTo(sqlite3* handle);

    /// For an INSERT that names its columns: the others take their default values.
    void insertNamesOnly(std::vector<std::string> columns) { inserted_ = std::move(columns); }

    // For the callbacks.
    [[nodiscard]] jet::Table& table() { return table_; }
    [[nodiscard]] CaughtFailure& failure() { return failure_; }
    [[nodiscard]] const std::string& declaration() const { return declaration_; }
    [[nodiscard]] int remember(AccessPlan plan);
    [[nodiscard]] const AccessPlan& plan(int number) const {
        return plans_.at(static_cast<std::size_t>(number));
    }
    /// Values: SQLite's arguments of xUpdate behind the two row ids.
    sqlite3_int64 insert(sqlite3_value** values, int count);
    void update(sqlite3_int64 place, sqlite3_value** values, int count);

private:
    [[nodiscard]] bool isInserted(const std::string& column) const;

    jet::Table& table_;
    CaughtFailure& failure_;
    std::string declaration_;
    std::vector<AccessPlan> plans_;
    std::optional<std::vector<std::string>> inserted_;
};

}  // namespace stelvan::sql
