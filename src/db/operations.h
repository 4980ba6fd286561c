// The six operations through which everything above reads and writes the GEM database.
//
// Each opens the database anew by path. A failure is a RunTimeError that bears the operation's
// name: a question that could not be asked is never answered.
#pragma once

#include <functional>
#include <string>

#include "db/connection.h"
#include "db/current_records.h"
#include "db/record_set.h"

namespace stelvan::db {

class Operations {
public:
    /// `path` is read at each use; both must outlive the object.
    Operations(const std::string& path, CurrentRecords& current);

    /// The connection text for the present path.
    [[nodiscard]] std::string connectionText() const;

    /// Runs one statement; the connection stays open until its next use or its end.
    void lExecCommand(Connection& connection, const std::string& sql) const;

    /// `records` opened on a static, optimistic cursor.
    Recordset& lGetRecordSet(Connection& connection, Recordset& records,
                             const std::string& sql) const;

    /// Makes the rows of `sql` the current records, position 1 (0 when empty), and runs `onLoaded`.
    /// After a failure no record set is held and the position is 0.
    void lLoadData(const std::string& sql);
    /// Refreshes record display and navigator after a load (connected once at start-up).
    std::function<void()> onLoaded;

    /// Highest identifier plus one, never below 101; empty where there is no next one.
    [[nodiscard]] std::string lGetNextID(const std::string& column, const std::string& table) const;

    /// True when a row holds `value` (SQL literal: text callers bring their single quotes).
    [[nodiscard]] bool lCheckDuplicate(const std::string& value, const std::string& column,
                                       const std::string& table) const;

    /// Sets the filter column = value, quoted unless numeric; returns `records`.
    static Recordset& lFilterField(Recordset& records, const std::string& column,
                                   const std::string& value);

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Whether this process may write to the database file as it is now.
    [[nodiscard]] bool writable() const;

private:
    const std::string& path_;
    CurrentRecords& current_;
};

}  // namespace stelvan::db
