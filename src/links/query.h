// One query of a link editor: opened through lGetRecordSet, closed when done -- the record set
// first, then the connection, each only when it is open.
#pragma once

#include <QString>
#include <string>

#include "db/operations.h"

namespace stelvan::links {

class Query {
public:
    /// A failure has been reported when opened() is false.
    Query(db::Operations& operations, const std::string& sql);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    [[nodiscard]] bool opened() const { return opened_; }
    [[nodiscard]] db::Recordset& records() { return records_; }

    /// A column of the current record as text; Null is empty.
    [[nodiscard]] QString text(const char* column) const;

    /// Runs `read` for every record, first to last.
    template <class Read>
    void forEach(const Read& read) {
        for (; !records_.eof(); records_.moveNext()) read(*this);
    }

private:
    db::Connection connection_;
    db::Recordset records_;
    bool opened_;
};

}  // namespace stelvan::links
