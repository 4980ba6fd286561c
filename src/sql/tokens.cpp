#include "sql/tokens.h"

#include <algorithm>
#include <array>

#include "base/date.h"
#include "base/number.h"
#include "base/text.h"
#include "sql/error.h"

namespace stelvan::sql {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";  // what may stand between tokens

// Words that end a name's chance of being one, and that open or close an expression.
constexpr std::array<std::string_view, 14> kClauseWords{
    "SELECT", "FROM", "WHERE",  "GROUP", "HAVING", "ORDER", "BY",
    "ON",     "SET",  "VALUES", "INTO",  "UNION",  "JOIN",  "UPDATE"};
constexpr std::array<std::string_view, 14> kSymbols{"<>", "<=", ">=", "(", ")", ",", ".",
                                                    "*",  "+",  "-",  "/", "=", "<", ">"};

bool startsWord(char c) {
    return base::isLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool continuesWord(char c) {
    return startsWord(c) || base::isDigit(c);
}

bool isClauseWord(const Token& token) {
    return std::any_of(kClauseWords.begin(), kClauseWords.end(),
                       [&token](std::string_view word) { return token.isWord(word); });
}

/// Cuts one text into tokens; `at_` is where the next one begins.
class Tokenizer {
public:
    explicit Tokenizer(std::string_view sql) : sql_(sql) {}

    Tokens run() {
        while (skipBlanks()) takeToken();
        return std::move(tokens_);
    }

private:
    bool skipBlanks() {
        at_ = std::min(sql_.find_first_not_of(kBlanks, at_), sql_.size());
        return at_ < sql_.size();
    }

    void takeToken() {
        const char first = sql_[at_];
        if (first == '\'') return takeText();
        if (first == '[') return takeName(']');
        if (first == '"') return takeName('"');
        if (first == '#') return takeDate();
        if (startsWord(first)) return takeWord();
        if (startsNumber()) return takeNumber();
        takeSymbol();
    }

    void add(TokenKind kind, std::string text, std::size_t end) {
        tokens_.push_back({kind, std::move(text), at_});
        at_ = end;
    }

    /// A doubled quote inside stands for one and does not end the text.
    void takeText() {
        std::size_t end = sql_.find('\'', at_ + 1);
        while (end != std::string_view::npos && end + 1 < sql_.size() && sql_[end + 1] == '\'') {
            end = sql_.find('\'', end + 2);
        }
        if (end == std::string_view::npos) refuseExpression(sql_, tokens_, at_, "in string");
        add(TokenKind::Text, std::string(sql_.substr(at_, end + 1 - at_)), end + 1);
    }

    void takeName(char closing) {
        const std::size_t end = sql_.find(closing, at_ + 1);
        if (end == std::string_view::npos)
            refuseExpression(sql_, tokens_, at_, "(missing operator)");
        add(TokenKind::Name, std::string(sql_.substr(at_ + 1, end - at_ - 1)), end + 1);
    }

    void takeDate() {
        const std::size_t end = std::min(sql_.find('#', at_ + 1), sql_.size());
        const auto date = base::parseWrittenDate(sql_.substr(at_ + 1, end - at_ - 1));
        if (!date || end == sql_.size()) refuseExpression(sql_, tokens_, at_, "in date");
        add(TokenKind::Number, base::numberText(*date), end + 1);
    }

    void takeWord() {
        std::size_t end = at_;
        while (end < sql_.size() && continuesWord(sql_[end])) ++end;
        add(TokenKind::Word, std::string(sql_.substr(at_, end - at_)), end);
    }

    [[nodiscard]] bool digitAt(std::size_t at) const {
        return at < sql_.size() && base::isDigit(sql_[at]);
    }

    [[nodiscard]] bool startsNumber() const {
        return digitAt(at_) || (sql_[at_] == '.' && digitAt(at_ + 1));
    }

    void takeNumber() {
        std::size_t end = at_;
        while (digitAt(end)) ++end;
        if (end < sql_.size() && sql_[end] == '.') ++end;
        while (digitAt(end)) ++end;
        if (end < sql_.size() && (sql_[end] == 'e' || sql_[end] == 'E')) {
            const bool sign =
                end + 1 < sql_.size() && (sql_[end + 1] == '+' || sql_[end + 1] == '-');
            std::size_t exponent = end + (sign ? 2 : 1);
            if (digitAt(exponent)) end = exponent;
            while (digitAt(end)) ++end;
        }
        add(TokenKind::Number, std::string(sql_.substr(at_, end - at_)), end);
    }

    void takeSymbol() {
        if (sql_[at_] == ';') return takeEnd();
        const auto found = std::find_if(
            kSymbols.begin(), kSymbols.end(),
            [this](std::string_view symbol) { return sql_.substr(at_, symbol.size()) == symbol; });
        if (found == kSymbols.end()) refuseExpression(sql_, tokens_, at_, "(missing operator)");
        add(TokenKind::Symbol, std::string(*found), at_ + found->size());
    }

    void takeEnd() {
        ++at_;
        if (skipBlanks())
            throw Error(ErrorKind::Syntax, "Characters found after end of SQL statement.");
    }

    std::string_view sql_;
    std::size_t at_ = 0;
    Tokens tokens_;
};

}  // namespace

bool Token::isWord(std::string_view upperCase) const {
    return kind == TokenKind::Word && base::sameWord(text, upperCase);
}

bool Token::isName() const {
    return kind == TokenKind::Name || (kind == TokenKind::Word && !isClauseWord(*this));
}

Tokens tokenize(std::string_view sql) {
    return Tokenizer(sql).run();
}

std::string_view firstWord(std::string_view sql) {
    sql.remove_prefix(std::min(sql.find_first_not_of(kBlanks), sql.size()));
    if (sql.empty() || !startsWord(sql.front())) return {};
    const auto end = std::ranges::find_if_not(sql, continuesWord);
    return sql.substr(0, static_cast<std::size_t>(end - sql.begin()));
}

void refuseExpression(std::string_view sql, const Tokens& tokens, std::size_t offset,
                      std::string_view problem) {
    std::size_t begin = 0;
    std::size_t end = sql.size();
    for (const Token& token : tokens) {
        if (!isClauseWord(token)) continue;
        if (token.offset <= offset) begin = token.offset + token.text.size();
        if (token.offset > offset) end = std::min(end, token.offset);
    }
    const std::string_view expression = base::trimBlanks(sql.substr(begin, end - begin));
    throw Error(ErrorKind::Syntax, "Syntax error " + std::string(problem) +
                                       " in query expression '" + std::string(expression) + "'.");
}

}  // namespace stelvan::sql
