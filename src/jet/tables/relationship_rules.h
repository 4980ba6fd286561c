// Enforced relationships: what follows at once (cascades), and what is judged when the outermost
// unit of work commits (a child's parent, a parent's children).
//
// Until then a unit may do things in any order: write the child before its parent, or take a parent
// away and bring it back. Which relationships are enforced stands in the logical indexes of both
// tables.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "jet/disk/page.h"
#include "jet/rows/column_facts.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

class SharedDatabase;

/// One enforced relationship, seen from one of its two tables.
struct RelationshipLink {
    bool parent = false;  // this table is the one referred to
    std::size_t logical = 0;
    PageNumber otherTable = 0;
    std::int32_t partner = 0;  // number of the other table's logical index
    std::uint8_t cascadeUpdates = 0;
    std::uint8_t cascadeDeletes = 0;
    std::vector<std::size_t> columns;  // of this table, in the order of the relationship
};
[[nodiscard]] std::vector<RelationshipLink> linksOf(const TableDef& table);

/// Values of the columns of a link.
using LinkKey = std::vector<Value>;

class RelationshipRules {
public:
    explicit RelationshipRules(SharedDatabase& file) : file_(&file) {}

    /// A row that refers to a parent was added, or refers to another now.
    void childWritten(const TableDef& child, const RelationshipLink& link, RowId row);
    /// A row that children may refer to is gone: they go with it, or lose their reference, or are
    /// looked for at the end.
    void parentErased(const TableDef& parent, const RelationshipLink& link, LinkKey key);
    /// A row that children may refer to has another key: they follow, or are looked for at the end.
    void parentChanged(const TableDef& parent, const RelationshipLink& link, LinkKey oldKey,
                       const LinkKey& newKey);

    /// Throws MissingParent or HasChildren for what the unit of work leaves behind.
    void judge();
    void forget();

private:
    struct WrittenChild {
        PageNumber table = 0;
        std::size_t logical = 0;
        RowId row;
        friend auto operator<=>(const WrittenChild&, const WrittenChild&) = default;
    };
    struct LostParent {
        PageNumber table = 0;
        std::size_t logical = 0;
        LinkKey key;
    };

    /// The other table of a link, and the link as that table sees it.
    struct OtherSide {
        std::shared_ptr<const TableDef> table;
        RelationshipLink link;
    };
    [[nodiscard]] OtherSide otherSide(const RelationshipLink& link);
    [[nodiscard]] std::vector<RowId> rowsWith(const TableDef& table, const RelationshipLink& link,
                                              const LinkKey& key, bool firstOnly);
    void judgeChild(const WrittenChild& child);
    void judgeParent(const LostParent& parent);
    [[nodiscard]] std::string nameOf(PageNumber table);

    SharedDatabase* file_;
    std::set<WrittenChild> children_;
    std::vector<LostParent> parents_;
};

}  // namespace stelvan::jet
