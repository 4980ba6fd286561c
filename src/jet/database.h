// The public face of the file engine: a database, its tables, cursors over their rows, and units of
// work.
//
// A Database is a light handle; all handles of this process on one file share its pages, so a unit
// of work begun through one is seen through the others and commits or rolls back as a whole. Not
// thread-safe: one thread uses the handles of one file.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jet/disk/error.h"
#include "jet/disk/page_file.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table.h"
#include "jet/tables/table_spec.h"
#include "jet/tables/unit_of_work.h"

namespace stelvan::jet {

class Database {
public:
    /// Opens and recognises the file. Throws FileNotFound, BadPath, PermissionDenied, NotADatabase,
    /// UnsupportedVersion, Encrypted, PasswordProtected, Corrupt, Locked, Io.
    static Database open(const std::filesystem::path& path, Access access = Access::ReadWrite);

    /// The same over pages that are open already.
    static Database over(std::shared_ptr<PageFile> pages, Access access = Access::ReadWrite);

    /// A copy of the file as it is at this moment, to be read for as long as it takes while others
    /// write.
    [[nodiscard]] Database copyInMemory();

    /// Creates an empty Access 2003 database (16 pages); `path` must not exist. `created` goes to
    /// the dates of the catalogue's rows (days, as DateTime), so that two builds give the same
    /// bytes.
    static Database create(const std::filesystem::path& path, DateTime created);

    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    /// What it stands on, for those who look below tables and rows.
    [[nodiscard]] const std::shared_ptr<PageFile>& pages() const;
    [[nodiscard]] const std::filesystem::path& path() const;
    [[nodiscard]] Access access() const;

    /// Names of tables in alphabetical order (letter case ignored); system tables only on request.
    [[nodiscard]] std::vector<std::string> tableNames(bool withSystem = false);
    [[nodiscard]] bool hasTable(std::string_view name);

    /// Owned by the database; found without regard to letter case. Throws NoSuchTable, Corrupt.
    [[nodiscard]] Table& table(std::string_view name);

    [[nodiscard]] std::vector<RelationshipInfo> relationships();

    /// Each of these is a unit of work of its own, or part of the one that is open.
    void createTable(const TableSpec& spec);
    void createRelationship(const RelationshipInfo& relationship);
    void dropTable(std::string_view name);

    /// Keeps the file unchanged for the reader while it lives.
    [[nodiscard]] std::unique_ptr<ReadScope> beginRead();

    /// A number for what the file holds now: as long as it is the same, nobody has changed
    /// anything.
    [[nodiscard]] std::uint64_t moment();

    /// A number that grows when another process is seen to have changed the file since this process
    /// opened it; what this process writes itself does not count.
    [[nodiscard]] std::uint64_t changesByOthers();

    /// Keeps what is to be taken back in memory when the open unit of work does not reach the file
    /// (the last first, and none may throw); forgets it where no unit is open.
    void onRollback(std::function<void()> undo);

    struct Impl;
    [[nodiscard]] Impl& impl() { return *impl_; }

private:
    explicit Database(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace stelvan::jet
