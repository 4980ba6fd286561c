#include "links/link_rows.h"

#include "links/query.h"

namespace stelvan::links {

bool replaceLinks(db::Operations& operations, const LinkTable& table, const std::string& owner,
                  const std::vector<std::string>& items) {
    Query links(operations, std::string("SELECT * FROM ") + table.name + " WHERE " + table.owner +
                                " = " + owner);
    if (!links.opened()) return false;
    db::Recordset& rows = links.records();
    for (; !rows.eof(); rows.moveNext()) rows.deleteCurrent();
    std::int32_t order = 0;
    for (const std::string& item : items) {
        rows.addNew();
        rows.setField(table.owner, owner);
        rows.setField(table.item, item);
        rows.setField(table.order, ++order);
        rows.update();
    }
    return true;
}

}  // namespace stelvan::links
