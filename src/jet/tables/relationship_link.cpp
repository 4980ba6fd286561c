#include "jet/tables/relationship_link.h"

#include "jet/tables/definition_format.h"

namespace stelvan::jet {

RelationshipLink linkAt(const TableDef& table, std::size_t position) {
    const LogicalIndexDef& logical = table.logical[position];
    RelationshipLink link;
    link.parent = logical.side == logical_index::kParentSide;
    link.logical = position;
    link.otherTable = logical.otherTable;
    link.partner = logical.partner;
    link.cascadeUpdates = logical.cascadeUpdates;
    link.cascadeDeletes = logical.cascadeDeletes;
    for (const IndexColumn& part : table.trees[logical.real].columns)
        link.columns.push_back(part.column);
    return link;
}

std::vector<RelationshipLink> linksOf(const TableDef& table) {
    std::vector<RelationshipLink> links;
    for (std::size_t i = 0; i < table.logical.size(); ++i) {
        if (table.logical[i].kind == logical_index::kForeign) links.push_back(linkAt(table, i));
    }
    return links;
}

}  // namespace stelvan::jet
