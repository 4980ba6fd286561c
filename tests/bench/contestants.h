// The files that the contestants work on: the same rows as an Access file and as a SQLite file.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "data/builder/table_text.h"
#include "jet/database.h"

namespace stelvan::bench {

inline constexpr std::size_t kRows = 100'000;     // rows of the variable table
inline constexpr std::size_t kInserted = 10'000;  // rows added in one unit of work
inline constexpr std::size_t kEntries = 100'000;  // of an index by itself
inline constexpr const char* kTable = "secs_cusvar";

/// A folder on the disk of the build, removed at the end. Both files are built on first use.
class Files {
public:
    static Files& get();
    ~Files();
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    [[nodiscard]] const std::filesystem::path& accessFile();
    [[nodiscard]] const std::filesystem::path& hugeAccessFile();  // four times the rows
    [[nodiscard]] const std::filesystem::path& sqliteFile();
    /// A whole model: the standard's items, kRows variables, 2,000 events, alarms and reports.
    [[nodiscard]] const std::filesystem::path& modelFile();
    [[nodiscard]] const std::filesystem::path& standardFile();  // the standard's items alone
    /// A fresh copy, synced, that the caller may change; it replaces the copy before.
    [[nodiscard]] std::filesystem::path copyOf(const std::filesystem::path& file);

private:
    Files();
    std::filesystem::path folder_, access_, huge_, sqlite_, model_, standard_;
};

/// Decodes every value of every row of the variable table; a sum that depends on all of them.
std::size_t readAll(const std::filesystem::path& file);

/// Rows that are not in the files yet, as values of the schema's columns.
[[nodiscard]] const std::vector<std::vector<jet::ColumnValue>>& newRows(
    const jet::TableInfo& table);

/// Owns a connection with the durability that our journal has: rollback journal, every commit
/// synced.
class Sqlite {
public:
    explicit Sqlite(const std::filesystem::path& file);
    void run(const char* sql) const;
    /// The statement lives as long as the connection.
    [[nodiscard]] sqlite3_stmt* prepare(const std::string& sql);

private:
    struct Close {
        void operator()(sqlite3* connection) const { sqlite3_close(connection); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3, Close> connection_;
    std::vector<std::unique_ptr<sqlite3_stmt, Close>> statements_;
};

/// "INSERT INTO secs_cusvar VALUES (?, ...)" and its parameters.
[[nodiscard]] std::string insertText(std::size_t columns);
void bindRow(sqlite3_stmt* statement, const std::vector<jet::ColumnValue>& row);

}  // namespace stelvan::bench
