// Enforced relationships: what follows at once (cascades), and what is judged when the outermost
// unit of work commits (a child's parent, a parent's children). Nothing is written here: the caller
// is told what must follow.
//
// Until it commits a unit may do things in any order: write the child before its parent, or take a
// parent away and bring it back. Which relationships are enforced stands in the logical indexes of
// both tables.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "jet/disk/page_file.h"
#include "jet/tables/catalog.h"
#include "jet/tables/relationship_link.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

/// What has to follow a change of rows that others refer to: these rows go, or take these values.
struct Cascade {
    std::shared_ptr<const TableDef> table;
    std::vector<RowId> rows;
    bool erase = false;
    bool mayBeGone = false;  // a row may have gone already, by way of another relationship
    std::vector<ColumnValue> values;
};

class RelationshipRules {
public:
    RelationshipRules(PageFile& file, Catalog& catalog) : file_(&file), catalog_(&catalog) {}

    /// A row that refers to a parent was added, or refers to another now.
    void childWritten(const TableDef& child, const RelationshipLink& link, RowId row);
    /// A row that children may refer to is gone, or has another key: gives what follows for the
    /// children, if anything; where nothing does, they are looked for at the end.
    [[nodiscard]] Cascade parentTouched(const TableDef& parent, const TouchedLink& touched);

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
    [[nodiscard]] Cascade parentErased(const TouchedLink& touched);
    [[nodiscard]] Cascade parentChanged(const TouchedLink& touched);
    void judgeChild(const WrittenChild& child);
    void judgeParent(const LostParent& parent);
    [[nodiscard]] std::string nameOf(PageNumber table);

    PageFile* file_;
    Catalog* catalog_;
    std::set<WrittenChild> children_;
    std::vector<LostParent> parents_;
};

}  // namespace stelvan::jet
