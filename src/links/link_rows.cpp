#include "links/link_rows.h"

#include <algorithm>

#include "db/error_map.h"
#include "db/query.h"

namespace stelvan::links {

LinkRows linkRowsOf(const db::Operations& operations, const gem::LinkTable& table,
                    const std::string& owner) {
    LinkRows rows;
    db::Query links(operations, gem::linksOf(table, owner));
    links.forEach([&](const db::Query& row) {
        rows.emplace_back(row.text(table.item), row.text(table.order));
    });
    std::sort(rows.begin(), rows.end());
    return rows;
}

void requireUnchanged(const LinkRows& shown, const LinkRows& now) {
    if (shown != now) throw db::rowChanged();
}

void replaceLinks(const db::Operations& operations, const gem::LinkTable& table,
                  const std::string& owner, const std::vector<std::string>& items) {
    db::Query links(operations, gem::linksOf(table, owner));
    db::Recordset& rows = links.records();
    for (; !rows.eof(); rows.moveNext()) rows.deleteCurrent();
    std::int32_t order = 0;
    for (const std::string& item : items) {
        rows.addNew();
        rows.setField(std::string(table.owner), owner);
        rows.setField(std::string(table.item), item);
        rows.setField(std::string(table.order), ++order);
        rows.update();
    }
}

}  // namespace stelvan::links
