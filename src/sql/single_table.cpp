#include "sql/single_table.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/text.h"

namespace stelvan::sql {

std::optional<std::size_t> columnNamed(const Statement& statement, const jet::TableInfo& table,
                                       std::size_t begin, std::size_t end) {
    const Tokens& tokens = statement.tokens;
    if (end - begin == 3 && tokens[begin + 1].isSymbol(".") &&
        base::sameWord(tokens[begin].text, statement.tables.front().alias)) {
        begin += 2;
    }
    if (end - begin != 1 || !tokens[begin].isName()) return std::nullopt;
    return table.findColumn(tokens[begin].text);
}

namespace {

// Any of these makes rows that are not the table's own.
constexpr std::array<std::string_view, 4> kOtherShapes{"GROUP", "HAVING", "UNION", "JOIN"};

bool hasOtherShape(const Statement& statement) {
    const auto selects = std::count_if(statement.tokens.begin(), statement.tokens.end(),
                                       [](const Token& token) { return token.isWord("SELECT"); });
    const bool other =
        std::any_of(statement.tokens.begin(), statement.tokens.end(), [](const Token& token) {
            return std::any_of(kOtherShapes.begin(), kOtherShapes.end(),
                               [&token](std::string_view word) { return token.isWord(word); });
        });
    return statement.kind != StatementKind::Select || selects != 1 || other ||
           statement.tables.size() != 1;
}

std::optional<std::vector<std::size_t>> listedColumns(const Statement& statement,
                                                      const jet::TableInfo& table,
                                                      std::size_t from) {
    std::vector<std::size_t> columns;
    if (from == 2 && statement.tokens[1].isSymbol("*")) {
        columns.resize(table.columns.size());
        std::iota(columns.begin(), columns.end(), std::size_t{0});
        return columns;
    }
    std::size_t begin = 1;
    for (std::size_t at = 1; at <= from; ++at) {
        if (at < from && !statement.tokens[at].isSymbol(",")) continue;
        const std::optional<std::size_t> column = columnNamed(statement, table, begin, at);
        if (!column) return std::nullopt;
        columns.push_back(*column);
        begin = at + 1;
    }
    return columns;
}

}  // namespace

std::optional<SingleTableSelect> asSingleTable(const Statement& statement,
                                               const jet::TableInfo& table) {
    if (hasOtherShape(statement)) return std::nullopt;
    const Tokens& tokens = statement.tokens;
    const auto from = std::find_if(tokens.begin(), tokens.end(),
                                   [](const Token& token) { return token.isWord("FROM"); });
    SingleTableSelect select;
    select.from = static_cast<std::size_t>(from - tokens.begin());
    const TableReference& reference = statement.tables.front();
    if (select.from + 1 != reference.token) return std::nullopt;
    auto columns = listedColumns(statement, table, select.from);
    if (!columns) return std::nullopt;
    select.columns = std::move(*columns);
    select.everyRow = reference.end == tokens.size();
    select.ordered =
        std::any_of(from, tokens.end(), [](const Token& token) { return token.isWord("ORDER"); });
    return select;
}

Tokens selectingPlaces(const Statement& statement, const SingleTableSelect& select) {
    Tokens tokens{statement.tokens.front(), Token{TokenKind::Word, "_rowid_", 0}};
    tokens.insert(tokens.end(), statement.tokens.begin() + static_cast<std::ptrdiff_t>(select.from),
                  statement.tokens.end());
    return tokens;
}

Tokens judgingPlace(const Statement& statement, const SingleTableSelect& select) {
    const Tokens all = selectingPlaces(statement, select);
    const auto is = [](std::string_view word) {
        return [word](const Token& token) { return token.isWord(word); };
    };
    const auto order = std::find_if(all.begin(), all.end(), is("ORDER"));
    const auto where = std::find_if(all.begin(), order, is("WHERE"));
    Tokens tokens(all.begin(), where);
    for (const char* word : {"WHERE", "_rowid_"}) tokens.push_back({TokenKind::Word, word, 0});
    for (const char* symbol : {"=", "?"}) tokens.push_back({TokenKind::Symbol, symbol, 0});
    if (where == order) return tokens;
    tokens.push_back({TokenKind::Word, "AND", 0});
    tokens.push_back({TokenKind::Symbol, "(", 0});
    tokens.insert(tokens.end(), where + 1, order);
    tokens.push_back({TokenKind::Symbol, ")", 0});
    return tokens;
}

}  // namespace stelvan::sql
