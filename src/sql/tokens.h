// The words of an SQL text as the Access engine cuts them: no comments, text in single quotes only,
// names in brackets or double quotes, dates between number signs (#).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace stelvan::sql {

enum class TokenKind {
    Word,    // keyword or bare name
    Name,    // [name] or "name": never a keyword
    Number,  // without sign, but for a date before the first day: dates are numbers
    Text,    // 'text'
    Symbol   // operator or punctuation
};

struct Token {
    TokenKind kind = TokenKind::Symbol;
    std::string text;        // a Name without its brackets, everything else as written
    std::size_t offset = 0;  // in the SQL text

    /// A keyword, without regard to letter case.
    [[nodiscard]] bool isWord(std::string_view upperCase) const;
    [[nodiscard]] bool isSymbol(std::string_view symbol) const {
        return kind == TokenKind::Symbol && text == symbol;
    }
    [[nodiscard]] bool isName() const;
};

using Tokens = std::vector<Token>;

/// Throws Error (Syntax) for text or a name without an end, what is no date, and for characters
/// that start no token.
[[nodiscard]] Tokens tokenize(std::string_view sql);

/// The bare word that a text begins with; empty where it begins otherwise.
[[nodiscard]] std::string_view firstWord(std::string_view sql);

/// The refusal of an expression, as the engine words it: `problem` is "(missing operator)", "in
/// string" or "in date". The expression is what follows the last clause word before `offset`, up to
/// the next one.
[[noreturn]] void refuseExpression(std::string_view sql, const Tokens& tokens, std::size_t offset,
                                   std::string_view problem);

}  // namespace stelvan::sql
