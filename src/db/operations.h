// The six operations through which everything above reads and writes the GEM database.
//
// Each opens the database anew by path, reports its own failure once under its own name, and then
// answers with its empty result. Callers see a failure with FailureWatch.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/error_info.h"
#include "db/connection.h"
#include "db/current_records.h"
#include "db/record_set.h"

namespace stelvan::db {

/// The data-source control AdoGEM: given a connection text and a record source, it yields a record
/// set.
struct DataSource {
    std::string connectionText;
    std::string recordSource;
    CursorType cursorType = CursorType::Static;
    LockType lockType = LockType::Optimistic;
    std::shared_ptr<Recordset> recordset;

    /// Opens the record source anew; the former record set is let go of, not closed.
    void refresh();
};

class Operations {
public:
    /// `path` is read at each use; all references must outlive the object.
    Operations(base::ErrorInfo& errors, const std::string& path, DataSource& adoGEM,
               CurrentRecords& current);

    /// The connection text for the present path.
    [[nodiscard]] std::string connectionText() const;

    /// Runs one statement; the connection stays open until its next use or its end.
    void lExecCommand(Connection& connection, const std::string& sql);

    /// `records` opened on a static, optimistic cursor; null after a failure (reported).
    Recordset* lGetRecordSet(Connection& connection, Recordset& records, const std::string& sql);

    /// Makes the rows of `sql` the current records, position 1 (0 when empty), and runs `onLoaded`.
    /// On a failure no record set is held and the position is 0; false.
    bool lLoadData(const std::string& sql);
    /// Refreshes record display and navigator after a load (connected once at start-up).
    std::function<void()> onLoaded;

    /// Highest identifier plus one, never below 101; empty where there is no next one or on a
    /// failure.
    [[nodiscard]] std::string lGetNextID(const std::string& column, const std::string& table);

    /// True when a row holds `value` (SQL literal: text callers bring their single quotes).
    [[nodiscard]] bool lCheckDuplicate(const std::string& value, const std::string& column,
                                       const std::string& table);

    /// Sets the filter column = value, quoted unless numeric; returns `records`.
    Recordset& lFilterField(Recordset& records, const std::string& column,
                            const std::string& value);

    [[nodiscard]] base::ErrorInfo& errors() { return errors_; }
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    base::ErrorInfo& errors_;
    const std::string& path_;
    DataSource& adoGEM_;
    CurrentRecords& current_;
};

}  // namespace stelvan::db
