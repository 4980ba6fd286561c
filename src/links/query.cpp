#include "links/query.h"

#include "form/text.h"

namespace stelvan::links {

Query::Query(db::Operations& operations, const std::string& sql)
    : opened_(operations.lGetRecordSet(connection_, records_, sql) != nullptr) {}

Query::~Query() {
    if (records_.state() == db::ObjectState::Open) records_.close();
    if (connection_.state() == db::ObjectState::Open) connection_.close();
}

QString Query::text(const char* column) const {
    return form::toQt(db::toTextOrEmpty(records_.field(column)));
}

}  // namespace stelvan::links
