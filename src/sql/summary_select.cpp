#include "sql/summary_select.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <variant>

#include "sql/single_table.h"
#include "sql/sqlite_values.h"

namespace stelvan::sql {

namespace {

constexpr std::size_t kFunction = 1;  // SELECT function ( argument ) FROM table
constexpr std::size_t kArgument = 3;

/// Where the bracket behind the function's argument stands.
std::optional<std::size_t> closingBracket(const Statement& statement) {
    const Tokens& tokens = statement.tokens;
    const TableReference& table = statement.tables.front();
    if (statement.kind != StatementKind::Select || statement.tables.size() != 1 ||
        table.end != tokens.size() || table.token < kArgument + 3)
        return std::nullopt;
    const std::size_t closing = table.token - 2;
    const bool framed = tokens[kFunction + 1].isSymbol("(") && tokens[closing].isSymbol(")") &&
                        tokens[closing + 1].isWord("FROM");
    return framed ? std::optional(closing) : std::nullopt;
}

/// Whole numbers are 32 bits where they fit, as they are when SQLite counts.
jet::Value wholeNumber(std::uint64_t number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    return static_cast<double>(number);
}

/// Nothing for a value that SQLite would compare in another way than an index does.
std::optional<jet::Value> asSqlSees(const jet::Value& value) {
    return std::visit(
        []<typename Stored>(const Stored& stored) -> std::optional<jet::Value> {
            if constexpr (std::is_same_v<Stored, bool>) {
                return jet::Value(stored ? -1 : 0);
            } else if constexpr (std::is_same_v<Stored, float>) {
                return jet::Value(static_cast<double>(stored));
            } else if constexpr (std::is_same_v<Stored, std::int32_t> ||
                                 std::is_same_v<Stored, double> ||
                                 std::is_same_v<Stored, std::string>) {
                return jet::Value(stored);
            } else {
                return std::nullopt;
            }
        },
        value);
}

std::optional<jet::Value> extremeOf(jet::Table& table, std::size_t column, jet::Extreme which) {
    const jet::TableInfo& info = table.info();
    if (!hasExactKeys(info.columns[column])) return std::nullopt;
    for (std::size_t index = 0; index < info.indexes.size(); ++index) {
        const auto& parts = info.indexes[index].columns;
        if (parts.empty() || parts.front().column != column) continue;
        const std::optional<jet::Value> value = table.extreme(index, which);
        if (value) return asSqlSees(*value);
    }
    return std::nullopt;
}

}  // namespace

std::optional<jet::Value> summaryOf(const Statement& statement, jet::Table& table) {
    const auto closing = closingBracket(statement);
    if (!closing) return std::nullopt;
    const Token& function = statement.tokens[kFunction];
    if (function.isWord("COUNT")) {
        const bool ofRows = *closing == kArgument + 1 && statement.tokens[kArgument].isSymbol("*");
        return ofRows ? std::optional(wholeNumber(table.count())) : std::nullopt;
    }
    const bool greatest = function.isWord("MAX");
    if (!greatest && !function.isWord("MIN")) return std::nullopt;
    const auto column = columnNamed(statement, table.info(), kArgument, *closing);
    if (!column) return std::nullopt;
    return extremeOf(table, *column, greatest ? jet::Extreme::Greatest : jet::Extreme::Least);
}

}  // namespace stelvan::sql
