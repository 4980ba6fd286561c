// The catalogue: which objects the file holds, and the definitions of its tables, kept while the
// file is as it was when they were read.
//
// All procedures need a scope on the page file. Definitions are shared with cursors that outlive a
// change.
//
// A row of MSysObjects names an object by Id (of a table: its definition page), ParentId, Name,
// Type and Flags; a row of MSysRelationships names one pair of columns of a relationship.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"
#include "jet/tables/table_spec.h"

namespace stelvan::jet {

/// Catalogue codes.
namespace catalogue {
inline constexpr std::int32_t kTables = 0x0F000001;  // parent of tables and queries
inline constexpr std::int32_t kDatabases = 0x0F000002;
inline constexpr std::int32_t kRelationships = 0x0F000003;  // parent of relationship objects
inline constexpr std::int32_t kRoot = 0x0F000000;
inline constexpr std::int32_t kDatabase = 0x10000000;  // MSysDb
inline constexpr std::int32_t kIdMask = 0x00FFFFFF;    // a table's Id is its definition page
inline constexpr std::int32_t kTypeTable = 1;
inline constexpr std::int32_t kTypeDatabase = 2;
inline constexpr std::int32_t kTypeContainer = 3;
inline constexpr std::int32_t kTypeQuery = 5;
inline constexpr std::int32_t kTypeRelationship = 8;
inline constexpr std::uint32_t kSystemObject = 0x80000000;
inline constexpr std::uint32_t kAccessObject = 0x00000002;
}  // namespace catalogue

/// Bits of MSysRelationships.grbit.
namespace relationship {
inline constexpr std::uint32_t kOneToOne = 0x00000001;
inline constexpr std::uint32_t kNotEnforced = 0x00000002;
inline constexpr std::uint32_t kCascadeUpdates = 0x00000100;
inline constexpr std::uint32_t kCascadeDeletes = 0x00001000;
inline constexpr std::uint32_t kSetNullOnDelete = 0x00002000;
}  // namespace relationship

/// One row of MSysObjects.
struct CatalogEntry {
    std::int32_t id = 0;
    std::int32_t parent = 0;
    std::string name;
    std::int32_t type = 0;
    std::uint32_t flags = 0;
    RowId row;

    [[nodiscard]] bool isTable() const { return type == catalogue::kTypeTable; }
    [[nodiscard]] bool isSystem() const {
        return (flags & (catalogue::kSystemObject | catalogue::kAccessObject)) != 0;
    }
    [[nodiscard]] PageNumber definitionPage() const {
        return static_cast<PageNumber>(id & catalogue::kIdMask);
    }
};

class Catalog {
public:
    explicit Catalog(PageFile& file) : file_(&file) {}

    /// Drops what was read from the file before another process changed it.
    void follow();
    /// Drops everything: after a change of definitions, or when a unit of work was rolled back.
    void forget();
    /// Changes whenever something was dropped.
    [[nodiscard]] std::uint64_t generation() const { return generation_; }

    [[nodiscard]] const std::vector<CatalogEntry>& entries();
    [[nodiscard]] const CatalogEntry* findTable(std::string_view name);
    /// The table at a definition page, or null where the catalogue knows none.
    [[nodiscard]] const CatalogEntry* findTableAt(PageNumber page);

    /// The definition of a table, with its name and properties. Throws Corrupt.
    [[nodiscard]] std::shared_ptr<const TableDef> definition(const CatalogEntry& table);
    /// The same by page; for the catalogue's own tables too.
    [[nodiscard]] std::shared_ptr<const TableDef> definitionAt(PageNumber page);

    [[nodiscard]] const std::vector<RelationshipInfo>& relationships();

private:
    void loadEntries();
    void loadRelationships();
    void readProperties(const CatalogEntry& table, TableDef& definition);

    PageFile* file_;
    std::uint64_t version_ = 0;
    std::uint64_t generation_ = 1;
    std::optional<std::vector<CatalogEntry>> entries_;
    std::unordered_map<std::string, std::size_t> tables_;  // folded name
    std::unordered_map<PageNumber, std::size_t> pages_;
    std::unordered_map<PageNumber, std::shared_ptr<const TableDef>> definitions_;
    std::optional<std::vector<RelationshipInfo>> relationships_;
};

/// The position of a column that a system table must have. Throws Corrupt.
[[nodiscard]] std::size_t systemColumn(const TableDef& table, std::string_view name);

}  // namespace stelvan::jet
