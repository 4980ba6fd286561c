#include "db/query.h"

#include "db/value_text.h"

namespace stelvan::db {

Query::Query(const Operations& operations, const std::string& sql) {
    operations.lGetRecordSet(connection_, records_, sql);
}

Query::Query(const std::string& connectionText, const std::string& sql, Reading reading) {
    connection_.setConnectionText(connectionText);
    connection_.open();
    records_.open(sql, connection_, CursorType::Static, LockType::Optimistic, reading);
}

std::string Query::text(std::string_view column) const {
    return toTextOrEmpty(records_.field(std::string(column)));
}

}  // namespace stelvan::db
