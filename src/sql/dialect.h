// Statements as callers write them, and the same in SQLite's spelling.
//
// Only what differs is changed: True and False become -1 and 0, names are quoted (many words are
// keywords to SQLite alone), "DELETE * FROM" loses its star, a text that is a table's name alone
// becomes a SELECT of it. Tokens are set apart by blanks, so that nothing joins to a comment or to
// an operator that Access lacks.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sql/tokens.h"

namespace stelvan::sql {

enum class StatementKind { Select, Insert, Update, Delete };

/// A table as a statement names it.
struct TableReference {
    std::size_t token = 0;  // position of its name in Statement::tokens
    std::size_t end = 0;    // position after its name and alias
    std::string alias;      // the name itself where there is no alias
};

struct Statement {
    std::string source;
    StatementKind kind = StatementKind::Select;
    Tokens tokens;
    std::vector<TableReference> tables;  // in the order of the text

    [[nodiscard]] const std::string& tableName(const TableReference& reference) const {
        return tokens[reference.token].text;
    }
};

/// Throws Error (Syntax, NotAStatement).
[[nodiscard]] Statement parseStatement(std::string_view sql);

/// The columns that an INSERT names; nothing where it names none.
[[nodiscard]] std::optional<std::vector<std::string>> insertedColumns(const Statement& statement);

/// A statement in SQLite's spelling; `offsets` says where each token begins in `text`.
struct Translation {
    std::string text;
    std::vector<std::size_t> offsets;
};

[[nodiscard]] Translation translate(const Tokens& tokens);

/// A name in double quotes.
[[nodiscard]] std::string quotedName(std::string_view name);

}  // namespace stelvan::sql
