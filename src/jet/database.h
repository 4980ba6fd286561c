// The public face of the file engine: a database, its tables, cursors over their rows, and units of
// work.
//
// A Database is a light handle; all handles of this process on one file share its pages, so a unit
// of work begun through one is seen through the others and commits or rolls back as a whole. Not
// thread-safe: one thread uses the handles of one file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jet/error.h"
#include "jet/page_file.h"
#include "jet/value.h"

namespace stelvan::jet {

/// Where a record is: its first page and slot, which stay the same while the record lives.
struct RowId {
    PageNumber page = 0;
    std::uint8_t slot = 0;
    friend auto operator<=>(const RowId&, const RowId&) = default;
    [[nodiscard]] std::int64_t packed() const {
        return (static_cast<std::int64_t>(page) << 8) | slot;
    }
    static RowId unpack(std::int64_t packed) {
        return {static_cast<PageNumber>(packed >> 8), static_cast<std::uint8_t>(packed & 0xFF)};
    }
};

/// A text index or comparison order; only General Legacy (0x0409, version 0) can be written.
struct SortOrder {
    std::uint16_t locale = 0x0409;
    std::uint8_t version = 0;
    friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

struct ColumnInfo {
    std::string name;
    ColumnType type = ColumnType::Text;
    std::uint16_t number = 0;    // never reused within a table
    std::uint16_t length = 0;    // bytes as stored in the definition; Text: 2 x characters
    std::uint8_t precision = 0;  // Numeric
    std::uint8_t scale = 0;      // Numeric
    bool fixedLength = false;
    bool autoNumber = false;
    bool compressed = false;      // "compressed Unicode"
    bool required = false;        // property Required
    bool allowZeroLength = true;  // property AllowZeroLength
    std::string defaultValue;  // property DefaultValue: expression text, empty where there is none
    SortOrder order;           // text columns
};

struct IndexColumn {
    std::size_t column = 0;  // position in TableInfo::columns
    bool ascending = true;
};

/// A logical index (several may share one tree).
struct IndexInfo {
    std::string name;
    std::vector<IndexColumn> columns;
    bool primary = false;
    bool unique = false;
    bool required = false;
    bool ignoreNulls = false;
    bool foreign = false;    // belongs to a relationship
    std::uint32_t tree = 0;  // position of the real index within the table
};

struct TableInfo {
    std::string name;
    std::uint32_t rows = 0;  // as counted in the definition
    bool system = false;
    std::vector<ColumnInfo> columns;  // ascending column number
    std::vector<IndexInfo> indexes;

    /// Position of a column by name, letter case ignored (ASCII and beyond as the file's order
    /// does).
    [[nodiscard]] std::optional<std::size_t> findColumn(std::string_view columnName) const;
};

struct RelationshipInfo {
    std::string name;
    std::string parentTable;
    std::vector<std::string> parentColumns;
    std::string childTable;
    std::vector<std::string> childColumns;
    bool enforced = false;
    bool cascadeUpdates = false;
    bool cascadeDeletes = false;
};

/// Which columns a reader wants, as positions in TableInfo::columns; nothing else is decoded.
using ColumnSet = std::vector<std::size_t>;

/// New values for some columns of a row.
using ColumnValue = std::pair<std::size_t, Value>;

/// Rows of a table, one after the other. Holds a read scope while it lives; a change of the table
/// through this process ends its use, except where Table says otherwise.
class Cursor {
public:
    virtual ~Cursor() = default;
    /// Moves to the next row; false after the last. Throws Corrupt with the page.
    virtual bool next() = 0;
    [[nodiscard]] virtual RowId rowId() const = 0;
    /// The value of a wanted column (position in TableInfo::columns; others give Null). Texts and
    /// bytes live until the next call of next(). Throws Corrupt when a long value cannot be read.
    [[nodiscard]] virtual ValueView value(std::size_t column) = 0;
};

/// One table of an open database. Lives no longer than its Database.
class Table {
public:
    virtual ~Table() = default;

    /// Fresh at each call: follows changes by other processes.
    [[nodiscard]] virtual const TableInfo& info() = 0;

    /// All rows in stored order (page, then slot).
    [[nodiscard]] virtual std::unique_ptr<Cursor> scan(ColumnSet wanted) = 0;

    /// Rows whose index columns equal `key` (as many values as wanted from the left, at least one),
    /// in index order. Values are converted to the column's type; one that cannot be gives no rows.
    /// Text compares as the file's order does. `index` is a position in info().indexes. Throws
    /// UnsupportedOrder where the index has a text column of an order that cannot be computed: scan
    /// instead.
    [[nodiscard]] virtual std::unique_ptr<Cursor> find(std::size_t index,
                                                       std::span<const Value> key,
                                                       ColumnSet wanted) = 0;

    /// All rows in the order of an index (rows that it leaves out as null are not given).
    [[nodiscard]] virtual std::unique_ptr<Cursor> inOrder(std::size_t index, ColumnSet wanted) = 0;

    /// One row, or null when it is gone. The cursor stands on the row already.
    [[nodiscard]] virtual std::unique_ptr<Cursor> row(RowId id, ColumnSet wanted) = 0;

    /// Adds a row: columns that are not named get Null (Boolean: False; AutoNumber: the next
    /// number). Default values are the caller's business. Constraints are checked before anything
    /// is changed.
    virtual RowId insert(std::span<const ColumnValue> values) = 0;

    /// Changes some columns. Throws RowGone.
    virtual void update(RowId id, std::span<const ColumnValue> values) = 0;

    /// Removes the row, its index entries and its long values. Throws RowGone.
    virtual void erase(RowId id) = 0;
};

class Database;

/// A unit of work over all handles on the file; nests and rolls back as WriteScope does. Enforced
/// relationships are judged at the outermost commit.
class UnitOfWork {
public:
    explicit UnitOfWork(Database& database);
    ~UnitOfWork();
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
    void commit();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// What a new table is made of; column numbers and lengths of types of natural size may be left
/// out.
struct TableSpec {
    std::string name;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;
};

class Database {
public:
    /// Opens and recognises the file. Throws FileNotFound, BadPath, PermissionDenied, NotADatabase,
    /// UnsupportedVersion, Encrypted, PasswordProtected, Corrupt, Locked, Io.
    static Database open(const std::filesystem::path& path, Access access = Access::ReadWrite);

    /// The same over pages that are open already.
    static Database over(std::shared_ptr<PageFile> pages, Access access = Access::ReadWrite);

    /// Creates an empty Access 2003 database (16 pages); `path` must not exist. `created` goes to
    /// the dates of the catalogue's rows (days, as DateTime), so that two builds give the same
    /// bytes.
    static Database create(const std::filesystem::path& path, DateTime created);

    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

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

    struct Impl;
    [[nodiscard]] Impl& impl() { return *impl_; }

private:
    explicit Database(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace stelvan::jet
