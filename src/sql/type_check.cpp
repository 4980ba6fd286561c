#include "sql/type_check.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"
#include "sql/error.h"

namespace stelvan::sql {

namespace {

enum class Nature { Unknown, Number, Text };

constexpr std::array<std::string_view, 6> kComparisons{"=", "<>", "<", ">", "<=", ">="};
constexpr std::array<std::string_view, 5> kArithmetic{"+", "-", "*", "/", "."};

Nature natureOf(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Text:
        case jet::ColumnType::Memo:
            return Nature::Text;
        case jet::ColumnType::Boolean:
        case jet::ColumnType::Byte:
        case jet::ColumnType::Integer:
        case jet::ColumnType::Long:
        case jet::ColumnType::Money:
        case jet::ColumnType::Single:
        case jet::ColumnType::Double:
        case jet::ColumnType::DateTime:
        case jet::ColumnType::Numeric:
            return Nature::Number;
        default:
            return Nature::Unknown;
    }
}

class Checker {
public:
    Checker(const Tokens& tokens, const std::vector<ScopeTable>& scope)
        : tokens_(tokens), scope_(scope) {}

    void run() const {
        bool assigning = false;
        for (std::size_t at = 1; at + 1 < tokens_.size(); ++at) {
            const Token& token = tokens_[at];
            if (token.isWord("SET")) assigning = true;
            if (token.isWord("WHERE") || token.isWord("SELECT")) assigning = false;
            if (!assigning && isComparison(token)) require(before(at), after(at + 1));
            if (token.isWord("IN") && tokens_[at + 1].isSymbol("(")) checkList(at);
            if (token.isWord("BETWEEN")) checkRange(at);
        }
    }

private:
    static bool isComparison(const Token& token) {
        return token.kind == TokenKind::Symbol &&
               std::find(kComparisons.begin(), kComparisons.end(), token.text) !=
                   kComparisons.end();
    }

    static void require(Nature left, Nature right) {
        if (left == Nature::Unknown || right == Nature::Unknown || left == right) return;
        throw Error(ErrorKind::TypeMismatch, "Data type mismatch in criteria expression.");
    }

    [[nodiscard]] bool arithmeticAt(std::size_t at) const {
        return at < tokens_.size() && tokens_[at].kind == TokenKind::Symbol &&
               std::find(kArithmetic.begin(), kArithmetic.end(), tokens_[at].text) !=
                   kArithmetic.end();
    }

    /// What the column, qualified or not, that ends at `at` is; unknown where tables disagree.
    [[nodiscard]] Nature column(std::size_t at) const {
        const bool qualified = at >= 2 && tokens_[at - 1].isSymbol(".");
        std::optional<Nature> found;
        for (const ScopeTable& table : scope_) {
            if (qualified && !base::sameWord(table.alias, tokens_[at - 2].text)) continue;
            const auto position = table.info->findColumn(tokens_[at].text);
            if (!position) continue;
            const Nature nature = natureOf(table.info->columns[*position].type);
            if (found && *found != nature) return Nature::Unknown;
            found = nature;
        }
        return found.value_or(Nature::Unknown);
    }

    [[nodiscard]] Nature operand(std::size_t at) const {
        const Token& token = tokens_[at];
        if (token.kind == TokenKind::Text) return Nature::Text;
        if (token.kind == TokenKind::Number) return Nature::Number;
        if (!token.isName()) return Nature::Unknown;
        const bool truth = token.isWord("TRUE") || token.isWord("FALSE");
        return truth ? Nature::Number : column(at);
    }

    /// The operand that ends before the operator at `at`.
    [[nodiscard]] Nature before(std::size_t at) const {
        const std::size_t last = at - 1;
        const bool qualified = last >= 2 && tokens_[last - 1].isSymbol(".");
        const std::size_t first = qualified ? last - 2 : last;
        return first > 0 && arithmeticAt(first - 1) ? Nature::Unknown : operand(last);
    }

    /// The operand that begins at `at`.
    [[nodiscard]] Nature after(std::size_t at) const {
        if (at + 1 < tokens_.size() && (tokens_[at].isSymbol("-") || tokens_[at].isSymbol("+")))
            ++at;
        if (at + 2 < tokens_.size() && tokens_[at + 1].isSymbol(".")) at += 2;
        const bool call = at + 1 < tokens_.size() && tokens_[at + 1].isSymbol("(");
        return call || arithmeticAt(at + 1) ? Nature::Unknown : operand(at);
    }

    [[nodiscard]] Nature beforeWord(std::size_t at) const {
        return before(tokens_[at - 1].isWord("NOT") && at > 1 ? at - 1 : at);
    }

    void checkList(std::size_t in) const {
        const Nature left = beforeWord(in);
        for (std::size_t at = in + 2; at < tokens_.size() && !tokens_[at].isSymbol(")"); ++at) {
            const bool starts = tokens_[at - 1].isSymbol("(") || tokens_[at - 1].isSymbol(",");
            if (starts && !tokens_[at].isWord("SELECT")) require(left, after(at));
        }
    }

    void checkRange(std::size_t between) const {
        const Nature left = beforeWord(between);
        require(left, after(between + 1));
        for (std::size_t at = between + 1; at + 1 < tokens_.size(); ++at) {
            if (!tokens_[at].isWord("AND")) continue;
            require(left, after(at + 1));
            return;
        }
    }

    const Tokens& tokens_;
    const std::vector<ScopeTable>& scope_;
};

}  // namespace

void checkComparisons(const Tokens& tokens, const std::vector<ScopeTable>& scope) {
    Checker(tokens, scope).run();
}

}  // namespace stelvan::sql
