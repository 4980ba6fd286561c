// What SQLite says against a statement, in the words that users of Access know.
#pragma once

#include <sqlite3.h>

#include "sql/dialect.h"
#include "sql/error.h"

namespace stelvan::sql {

/// Call right after the failing call on `handle`; `translation` is what SQLite was given.
[[noreturn]] void refuse(sqlite3* handle, const Statement& statement,
                         const Translation& translation);

[[noreturn]] void refuseUnknownColumn();
[[noreturn]] void refuseUnknownTable(const std::string& name);

}  // namespace stelvan::sql
