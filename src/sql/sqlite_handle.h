// Owner of one SQLite database in memory: it parses, plans, joins and sorts; all rows stay in the
// file.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace stelvan::sql {

/// The collation of text columns, as their declarations name it.
inline constexpr const char* kTextOrder = "file_order";

class SqliteHandle {
public:
    /// Quoted words are names only; text compares, and LIKE matches, by the file's order.
    SqliteHandle();

    [[nodiscard]] sqlite3* get() const { return handle_.get(); }

private:
    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PreparedStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

}  // namespace stelvan::sql
