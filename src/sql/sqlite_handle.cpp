#include "sql/sqlite_handle.h"

#include <new>
#include <string_view>

#include "jet/index/collation.h"
#include "sql/like.h"

namespace stelvan::sql {

namespace {

std::string_view textOf(const void* data, int size) {
    return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

int compareByFileOrder(void*, int leftSize, const void* left, int rightSize, const void* right) {
    const std::string_view first = textOf(left, leftSize);
    const std::string_view second = textOf(right, rightSize);
    if (first == second) return 0;
    try {
        return jet::compareText(first, second);
    } catch (const std::bad_alloc&) {
        // No way to refuse from here; a wrong order of a statement that runs out of memory harms
        // nothing.
        return 0;
    }
}

std::string_view argument(sqlite3_value* value) {
    return textOf(sqlite3_value_text(value), sqlite3_value_bytes(value));
}

/// like(pattern, text) is how SQLite calls "text LIKE pattern".
void likeFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
        sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
        return sqlite3_result_null(context);
    }
    try {
        sqlite3_result_int(context,
                           matchesLike(argument(arguments[1]), argument(arguments[0])) ? -1 : 0);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

}  // namespace

SqliteHandle::SqliteHandle() {
    sqlite3* handle = nullptr;
    const int opened =
        sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(handle);
    if (opened != SQLITE_OK) throw std::bad_alloc();
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    constexpr int kFunction = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    if (sqlite3_create_collation(handle, kTextOrder, SQLITE_UTF8, nullptr, compareByFileOrder) !=
            SQLITE_OK ||
        sqlite3_create_function(handle, "like", 2, kFunction, nullptr, likeFunction, nullptr,
                                nullptr) != SQLITE_OK) {
        throw std::bad_alloc();
    }
}

}  // namespace stelvan::sql
