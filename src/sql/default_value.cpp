#include "sql/default_value.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/number.h"
#include "base/text.h"
#include "jet/rows/conversion.h"

namespace stelvan::sql {

namespace {

struct FlagWord {
    std::string_view word;
    bool value;
};
constexpr std::array kFlagWords{FlagWord{"True", true}, FlagWord{"Yes", true},
                                FlagWord{"On", true},   FlagWord{"False", false},
                                FlagWord{"No", false},  FlagWord{"Off", false}};

/// The text between the quotes, doubled ones taken once.
std::string unquoted(std::string_view literal) {
    std::string text;
    const char quote = literal.front();
    for (std::size_t at = 1; at + 1 < literal.size(); ++at) {
        text += literal[at];
        if (literal[at] == quote && literal[at + 1] == quote) ++at;
    }
    return text;
}

std::optional<jet::Value> constant(std::string_view expression) {
    expression = base::trimBlanks(expression);
    if (expression.starts_with('=')) expression = base::trimBlanks(expression.substr(1));
    for (const FlagWord& flag : kFlagWords) {
        if (base::sameWord(expression, flag.word)) return flag.value;
    }
    const bool quoted = expression.size() >= 2 && expression.front() == expression.back() &&
                        (expression.front() == '"' || expression.front() == '\'');
    if (quoted) return unquoted(expression);
    if (base::isNumeric(expression)) return std::string(expression);
    return std::nullopt;
}

}  // namespace

jet::Value defaultValue(const jet::ColumnInfo& column) {
    const std::optional<jet::Value> value =
        column.autoNumber ? std::nullopt : constant(column.defaultValue);
    return jet::convertTo(column, value.value_or(jet::Null{}));
}

}  // namespace stelvan::sql
