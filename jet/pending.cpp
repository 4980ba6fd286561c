#include "jet/database_impl.h"

namespace stelvan::jet {

namespace {
[[noreturn]] void pending() { throw Error(ErrorKind::Misuse, "Not written yet."); }
}  // namespace

RowId StoredTable::insert(std::span<const ColumnValue>) { pending(); }
void StoredTable::update(RowId, std::span<const ColumnValue>) { pending(); }
void StoredTable::erase(RowId) { pending(); }
Database Database::create(const std::filesystem::path&, DateTime) { pending(); }
void Database::createTable(const TableSpec&) { pending(); }
void Database::createRelationship(const RelationshipInfo&) { pending(); }
void Database::dropTable(std::string_view) { pending(); }

}  // namespace stelvan::jet
