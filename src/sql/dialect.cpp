#include "sql/dialect.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "sql/error.h"

namespace stelvan::sql {

namespace {

struct FirstWord {
    std::string_view word;
    StatementKind kind;
};

constexpr std::array kFirstWords{
    FirstWord{"SELECT", StatementKind::Select}, FirstWord{"INSERT", StatementKind::Insert},
    FirstWord{"UPDATE", StatementKind::Update}, FirstWord{"DELETE", StatementKind::Delete}};

// After these the list of a FROM clause is over; after the second kind a table's name comes.
constexpr std::array<std::string_view, 9> kEndOfTables{
    "WHERE", "GROUP", "HAVING", "ORDER", "UNION", "SET", "VALUES", "SELECT", "ON"};
constexpr std::array<std::string_view, 4> kBeforeTable{"FROM", "JOIN", "INTO", "UPDATE"};
constexpr std::array<std::string_view, 4> kJoinWords{"INNER", "LEFT", "RIGHT", "OUTER"};

// The words that mean to SQLite what they mean to Access; any other bare word is a name or a
// function.
constexpr std::array<std::string_view, 34> kKeywords{
    "SELECT", "FROM",     "WHERE",  "AND",    "OR",   "NOT",    "IN",    "BETWEEN", "LIKE",
    "IS",     "NULL",     "ORDER",  "BY",     "ASC",  "DESC",   "GROUP", "HAVING",  "UNION",
    "ALL",    "DISTINCT", "AS",     "INNER",  "LEFT", "RIGHT",  "OUTER", "JOIN",    "ON",
    "INSERT", "INTO",     "VALUES", "UPDATE", "SET",  "DELETE", "EXISTS"};

template <std::size_t N>
bool isOneOf(const Token& token, const std::array<std::string_view, N>& words) {
    return std::any_of(words.begin(), words.end(),
                       [&token](std::string_view word) { return token.isWord(word); });
}

std::optional<StatementKind> kindOf(const Token& token) {
    for (const FirstWord& first : kFirstWords) {
        if (token.isWord(first.word)) return first.kind;
    }
    return std::nullopt;
}

/// Finds the tables of a statement: each level of parentheses has its own FROM list.
class TableFinder {
public:
    explicit TableFinder(const Tokens& tokens) : tokens_(tokens) {}

    std::vector<TableReference> run() {
        for (at_ = 0; at_ < tokens_.size(); ++at_) look(tokens_[at_]);
        return std::move(tables_);
    }

private:
    void look(const Token& token) {
        if (token.isSymbol("(")) return open();
        if (token.isSymbol(")")) return close();
        if (isOneOf(token, kBeforeTable)) {
            inList_.back() = inList_.back() || token.isWord("FROM");
            expected_ = true;
            return;
        }
        if (isOneOf(token, kEndOfTables)) {
            // A join's condition leaves the list open: ", t" may follow it.
            if (!token.isWord("ON")) inList_.back() = false;
            expected_ = false;
            return;
        }
        if (token.isSymbol(",")) {
            expected_ = inList_.back();
            return;
        }
        if (expected_ && token.isName()) takeTable();
        expected_ = false;
    }

    /// Within "FROM (a INNER JOIN b ...)" the list goes on inside the parentheses.
    void open() { inList_.push_back(false); }

    void close() {
        if (inList_.size() > 1) inList_.pop_back();
        expected_ = false;
    }

    void takeTable() {
        TableReference reference{at_, at_ + 1, tokens_[at_].text};
        std::size_t next = at_ + 1;
        if (next < tokens_.size() && tokens_[next].isWord("AS")) ++next;
        if (next < tokens_.size() && tokens_[next].isName() &&
            !isOneOf(tokens_[next], kJoinWords)) {
            reference.alias = tokens_[next].text;
            reference.end = next + 1;
            at_ = next;
        }
        tables_.push_back(std::move(reference));
    }

    const Tokens& tokens_;
    std::size_t at_ = 0;
    bool expected_ = false;
    std::vector<bool> inList_{false};
    std::vector<TableReference> tables_;
};

std::string spelling(const Tokens& tokens, std::size_t at) {
    const Token& token = tokens[at];
    if (token.kind == TokenKind::Name) return quotedName(token.text);
    const bool qualified = at > 0 && tokens[at - 1].isSymbol(".");
    if (!qualified && token.isWord("TRUE")) return "(-1)";
    if (!qualified && token.isWord("FALSE")) return "(0)";
    const bool isName = token.kind == TokenKind::Word && !isOneOf(token, kKeywords);
    return isName ? quotedName(token.text) : token.text;
}

}  // namespace

Statement parseStatement(std::string_view sql) {
    Statement statement;
    statement.source = sql;
    statement.tokens = tokenize(sql);
    Tokens& tokens = statement.tokens;
    if (tokens.size() == 1 && tokens.front().isName()) {
        tokens.insert(tokens.begin(),
                      {Token{TokenKind::Word, "SELECT", 0}, Token{TokenKind::Symbol, "*", 0},
                       Token{TokenKind::Word, "FROM", 0}});
    }
    const std::optional<StatementKind> kind =
        tokens.empty() ? std::nullopt : kindOf(tokens.front());
    if (!kind) {
        throw Error(ErrorKind::NotAStatement,
                    "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
                    "'UPDATE'.");
    }
    statement.kind = *kind;
    if (*kind == StatementKind::Delete && tokens.size() > 1 && tokens[1].isSymbol("*")) {
        tokens.erase(tokens.begin() + 1);
    }
    // SQLite's "INSERT OR REPLACE" and the like would write what Access refuses.
    if (*kind != StatementKind::Select && tokens.size() > 1 && tokens[1].isWord("OR")) {
        refuseExpression(sql, tokens, tokens[1].offset, "(missing operator)");
    }
    statement.tables = TableFinder(tokens).run();
    return statement;
}

std::optional<std::vector<std::string>> insertedColumns(const Statement& statement) {
    if (statement.kind != StatementKind::Insert || statement.tables.empty()) return std::nullopt;
    std::size_t at = statement.tables.front().token + 1;
    const Tokens& tokens = statement.tokens;
    if (at + 1 >= tokens.size() || !tokens[at].isSymbol("(") || tokens[at + 1].isWord("SELECT")) {
        return std::nullopt;
    }
    std::vector<std::string> columns;
    for (++at; at < tokens.size() && !tokens[at].isSymbol(")"); ++at) {
        if (tokens[at].isName()) columns.push_back(tokens[at].text);
    }
    return columns;
}

Translation translate(const Tokens& tokens) {
    Translation result;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (at > 0) result.text += ' ';
        result.offsets.push_back(result.text.size());
        result.text += spelling(tokens, at);
    }
    return result;
}

std::string quotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

}  // namespace stelvan::sql
