// Comparisons that the Access engine refuses: a number with a text.
//
// SQLite would compare the two and find them unequal, so that a forgotten or superfluous quote went
// unnoticed. Judged on the words of the statement, before it runs: columns, literals, and lists of
// them.
#pragma once

#include <string>
#include <vector>

#include "jet/database.h"
#include "sql/dialect.h"

namespace stelvan::sql {

/// A table of the statement under the name by which columns are qualified.
struct ScopeTable {
    std::string alias;
    const jet::TableInfo* info = nullptr;
};

/// Throws Error (TypeMismatch).
void checkComparisons(const Tokens& tokens, const std::vector<ScopeTable>& scope);

}  // namespace stelvan::sql
