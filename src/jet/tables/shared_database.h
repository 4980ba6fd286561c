// What all handles of this process on one file share: its pages, its catalogue, the writers of its
// tables, and the open unit of work.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>

#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/tables/catalog.h"
#include "jet/tables/relationship_rules.h"

namespace stelvan::jet {

class TableWriter;

class SharedDatabase {
public:
    explicit SharedDatabase(std::shared_ptr<PageFile> pages);
    ~SharedDatabase();
    SharedDatabase(const SharedDatabase&) = delete;
    SharedDatabase& operator=(const SharedDatabase&) = delete;

    /// The one object for a page file.
    static std::shared_ptr<SharedDatabase> of(const std::shared_ptr<PageFile>& pages);

    [[nodiscard]] PageFile& pages() { return *pages_; }
    [[nodiscard]] const std::shared_ptr<PageFile>& sharedPages() { return pages_; }

    /// The catalogue as the file holds it now. Needs a scope.
    [[nodiscard]] Catalog& catalog() {
        catalog_.follow();
        return catalog_;
    }

    /// The one writer of a table. Needs a scope.
    [[nodiscard]] TableWriter& writer(const std::shared_ptr<const TableDef>& table);

    [[nodiscard]] RelationshipRules& rules() { return rules_; }

    /// Units of work, each in the one before (see UnitScope).
    [[nodiscard]] int unitDepth() const { return units_; }
    void enterUnit() { ++units_; }
    void leaveUnit() {
        if (--units_ == 0) rules_.forget();
    }

    /// Cursors that hold spans of pages: memory is released only by the one that is alone.
    std::size_t cursors = 0;

private:
    std::shared_ptr<PageFile> pages_;
    Catalog catalog_;
    RelationshipRules rules_;
    std::unordered_map<PageNumber, std::unique_ptr<TableWriter>> writers_;
    std::uint64_t writersGeneration_ = 0;
    int units_ = 0;
};

/// Throws ReadOnly for a handle that was opened for reading.
void requireWritable(Access access, SharedDatabase& file);

}  // namespace stelvan::jet
