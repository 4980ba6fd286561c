// New and dropped objects in the system tables: the row of MSysObjects, and the rows of MSysACEs
// without which the engine reports missing permissions. Needs a unit of work.
#pragma once

#include <string>
#include <vector>

#include "jet/disk/page.h"
#include "jet/tables/shared_database.h"

namespace stelvan::jet {

/// Who may do what, as every file carries it in its own disguise: two bytes for each party.
struct SecurityIds {
    Blob admin;
    Blob users;
    std::vector<Blob> groups;  // further groups, in files that have some
};

class ObjectRegistry {
public:
    /// `now` goes to the dates of new rows.
    ObjectRegistry(SharedDatabase& file, DateTime now);

    void addTable(const std::string& name, PageNumber definition, const Blob& properties);
    void addRelationship(const std::string& name);
    void remove(const CatalogEntry& entry);

    /// Whether a table, query or linked table has the name.
    [[nodiscard]] bool nameTaken(std::string_view name);

private:
    void addObject(std::int32_t id, std::int32_t parent, const std::string& name, std::int32_t type,
                   const Blob& properties);
    void addEntry(std::int32_t object, const Blob& who, std::int32_t rights);
    void removeEntries(std::int32_t object);
    [[nodiscard]] std::int32_t nextRelationshipId();
    [[nodiscard]] SecurityIds readSecurityIds();

    SharedDatabase* file_;
    DateTime now_;
    SecurityIds ids_;
};

}  // namespace stelvan::jet
