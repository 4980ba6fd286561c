// A record set's filter: "column = 12" or "column = 'text'".
#pragma once

#include <string>

#include "jet/rows/value.h"

namespace stelvan::db {

struct RecordFilter {
    std::string column;
    std::string literal;  // without its quotes
    bool quoted = false;

    /// Throws 3001 for anything else; a quote within the quotes is such a thing.
    static RecordFilter parse(const std::string& text);

    /// Texts compare by the file's order, numbers by value. Null matches nothing.
    [[nodiscard]] bool matches(const jet::Value& value) const;
};

}  // namespace stelvan::db
