// One query with the connection it runs over, closed when done: the record set first, then the
// connection.
#pragma once

#include <string>
#include <string_view>

#include "db/operations.h"

namespace stelvan::db {

class Query {
public:
    /// Opened by lGetRecordSet. Throws RunTimeError.
    Query(const Operations& operations, const std::string& sql);
    /// Opened over any connection text. Throws RunTimeError.
    Query(const std::string& connectionText, const std::string& sql,
          Reading reading = Reading::AtOnce);
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    [[nodiscard]] Recordset& records() { return records_; }

    /// A column of the current record as text; Null is empty.
    [[nodiscard]] std::string text(std::string_view column) const;

    /// Runs `read` for every record, first to last.
    template <class Read>
    void forEach(const Read& read) {
        for (; !records_.eof(); records_.moveNext()) read(*this);
    }

private:
    Connection connection_;
    Recordset records_;  // after the connection, so that it goes first
};

}  // namespace stelvan::db
