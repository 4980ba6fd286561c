// What a statement can be refused for before or while it runs; faults of the file itself are
// jet::Error.
//
// what() is the full sentence as users of Access know it; db/ adds the provider's number to the
// kind.
#pragma once

#include <stdexcept>
#include <string>

namespace stelvan::sql {

enum class ErrorKind {
    Syntax,         // any clause that does not read as SQL
    NotAStatement,  // the first word starts no statement
    UnknownTable,
    UnknownColumn,  // taken for a parameter without a value
    UnknownInsertColumn,
    AmbiguousColumn,
    UnknownFunction,
    ValueCount,    // INSERT: as many values as columns
    TypeMismatch,  // number compared with text
    Engine         // anything else the SQL engine cannot do
};

class Error : public std::runtime_error {
public:
    Error(ErrorKind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}
    [[nodiscard]] ErrorKind kind() const { return kind_; }

private:
    ErrorKind kind_;
};

}  // namespace stelvan::sql
