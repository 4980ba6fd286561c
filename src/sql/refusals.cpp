#include "sql/refusals.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace stelvan::sql {

namespace {

/// A message of SQLite (what stands before the name it is about) and what it means to us. {} in our
/// text is that name.
struct Meaning {
    std::string_view start;
    ErrorKind kind;
    std::string_view text;
};

constexpr std::string_view kMissingParameter =
    "No value given for one or more required parameters.";

constexpr std::array kMeanings{
    Meaning{"no such column: ", ErrorKind::UnknownColumn, kMissingParameter},
    Meaning{"ambiguous column name: ", ErrorKind::AmbiguousColumn,
            "The specified field '{}' could refer to more than one table listed in the FROM clause "
            "of your SQL "
            "statement."},
    Meaning{"no such function: ", ErrorKind::UnknownFunction,
            "Undefined function '{}' in expression."},
};

constexpr std::string_view kNoColumnNamed = " has no column named ";
constexpr std::string_view kValuesFor = " values for ";
constexpr std::string_view kValuesSupplied = " values were supplied";

struct Clause {
    std::string_view word;
    std::string_view text;
};

// The clause in which the fault stands decides the sentence; the others are expressions.
constexpr std::array kClauses{
    Clause{
        "SELECT",
        "The SELECT statement includes a reserved word or an argument name that is misspelled or "
        "missing, or the punctuation is incorrect."},
    Clause{"FROM", "Syntax error in FROM clause."},
    Clause{"GROUP", "Syntax error in GROUP BY clause."},
    Clause{"ORDER", "Syntax error in ORDER BY clause."}};

constexpr std::array<std::string_view, 4> kExpressionWords{"WHERE", "HAVING", "ON", "SET"};

/// Where in the statement the fault stands, as a position among the tokens.
std::size_t faultyToken(sqlite3* handle, const Translation& translation) {
    const int offset = sqlite3_error_offset(handle);
    if (offset < 0) return translation.offsets.size();
    const auto after = std::upper_bound(translation.offsets.begin(), translation.offsets.end(),
                                        static_cast<std::size_t>(offset));
    return static_cast<std::size_t>(after - translation.offsets.begin()) -
           (after == translation.offsets.begin() ? 0 : 1);
}

[[noreturn]] void refuseSyntax(const Statement& statement, std::size_t fault) {
    const Tokens& tokens = statement.tokens;
    for (std::size_t at = std::min(fault + 1, tokens.size()); at-- > 0;) {
        const Token& token = tokens[at];
        const bool expression =
            std::any_of(kExpressionWords.begin(), kExpressionWords.end(),
                        [&token](std::string_view word) { return token.isWord(word); });
        if (expression && !token.isWord("SET")) {
            refuseExpression(statement.source, tokens, token.offset, "(missing operator)");
        }
        if (expression || token.isWord("UPDATE")) break;
        for (const Clause& clause : kClauses) {
            if (token.isWord(clause.word)) throw Error(ErrorKind::Syntax, std::string(clause.text));
        }
    }
    if (statement.kind == StatementKind::Insert) {
        throw Error(ErrorKind::Syntax, "Syntax error in INSERT INTO statement.");
    }
    throw Error(ErrorKind::Syntax, "Syntax error in UPDATE statement.");
}

void refuseByMeaning(std::string_view message) {
    for (const Meaning& meaning : kMeanings) {
        if (!message.starts_with(meaning.start)) continue;
        std::string text(meaning.text);
        const std::size_t place = text.find("{}");
        if (place != std::string::npos)
            text.replace(place, 2, message.substr(meaning.start.size()));
        throw Error(meaning.kind, text);
    }
}

void refuseInsertColumns(std::string_view message) {
    if (const std::size_t at = message.find(kNoColumnNamed); at != std::string_view::npos) {
        const std::string name(message.substr(at + kNoColumnNamed.size()));
        throw Error(
            ErrorKind::UnknownInsertColumn,
            "The INSERT INTO statement contains the following unknown field name: '" + name +
                "'.  Make sure you have typed the name correctly, and try the operation again.");
    }
    if (message.find(kValuesFor) != std::string_view::npos ||
        message.find(kValuesSupplied) != std::string_view::npos) {
        throw Error(ErrorKind::ValueCount,
                    "Number of query values and destination fields are not the same.");
    }
}

bool isSyntax(std::string_view message) {
    return message.ends_with("syntax error") || message == "incomplete input" ||
           message.starts_with("unrecognized token");
}

}  // namespace

void refuse(sqlite3* handle, const Statement& statement, const Translation& translation) {
    const std::string message = sqlite3_errmsg(handle);
    refuseByMeaning(message);
    refuseInsertColumns(message);
    if (isSyntax(message)) refuseSyntax(statement, faultyToken(handle, translation));
    throw Error(ErrorKind::Engine, message);
}

void refuseUnknownColumn() {
    throw Error(ErrorKind::UnknownColumn, std::string(kMissingParameter));
}

void refuseUnknownTable(const std::string& name) {
    throw Error(ErrorKind::UnknownTable,
                "The Microsoft Jet database engine cannot find the input table or query '" + name +
                    "'.  Make sure it exists and that its name is spelled correctly.");
}

}  // namespace stelvan::sql
