#include "model/core/values.h"

#include <cmath>

#include "base/decimal.h"
#include "jet/rows/conversion.h"
#include "jet/rows/value_text.h"

namespace stelvan::model {
namespace {

/// As a binary fraction: what most files hold, and quick. Nothing for what is exact otherwise.
std::optional<double> asDouble(const jet::Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* number = std::get_if<float>(&value)) return *number;
    return std::nullopt;
}

bool isDecimal(const jet::Value& value) {
    return std::holds_alternative<jet::Money>(value) || std::holds_alternative<jet::Numeric>(value);
}

bool isNumber(const jet::Value& value) {
    return asDouble(value).has_value() || isDecimal(value);
}

/// As exact decimals, for what has places; numbers that are not finite have none.
std::optional<base::Decimal> asDecimal(const jet::Value& value) {
    return isNumber(value) ? base::parseDecimal(jet::textOf(value)) : std::nullopt;
}

std::optional<std::int64_t> wholeOf(const base::Decimal& decimal) {
    const std::optional<std::string> digits = decimal.scaled(0);
    if (!digits || digits->size() > 18) return std::nullopt;
    const std::int64_t whole = std::stoll(*digits);
    return decimal.negative ? -whole : whole;
}

std::weak_ordering compareNumbers(const jet::Value& left, const jet::Value& right) {
    const auto leftDouble = asDouble(left);
    const auto rightDouble = asDouble(right);
    if (leftDouble && rightDouble) {
        const auto order = *leftDouble <=> *rightDouble;
        if (order == std::partial_ordering::less) return std::weak_ordering::less;
        if (order == std::partial_ordering::greater) return std::weak_ordering::greater;
        if (order == std::partial_ordering::equivalent) return std::weak_ordering::equivalent;
    }
    const auto leftExact = asDecimal(left);
    const auto rightExact = asDecimal(right);
    if (leftExact && rightExact) return *leftExact <=> *rightExact;
    return jet::textOf(left) <=> jet::textOf(right);
}

int rankOf(const jet::Value& value) {
    if (jet::isNull(value)) return 0;
    return isNumber(value) ? 1 : 2;
}

}  // namespace

std::optional<std::int64_t> wholeNumber(const jet::Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto number = asDouble(value)) {
        constexpr double kExact = 9007199254740992.0;  // 2^53
        if (!(std::abs(*number) <= kExact) || std::trunc(*number) != *number) return std::nullopt;
        return static_cast<std::int64_t>(*number);
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr && !isDecimal(value)) return std::nullopt;
    const auto decimal = base::parseDecimal(text != nullptr ? *text : jet::textOf(value));
    return decimal ? wholeOf(*decimal) : std::nullopt;
}

bool sameValue(const jet::Value& left, const jet::Value& right) {
    if (left.index() == right.index()) return left == right;
    if (jet::isNull(left) || jet::isNull(right)) return false;
    if (isNumber(left) && isNumber(right)) return std::is_eq(compareNumbers(left, right));
    const bool flags = std::holds_alternative<bool>(left) || std::holds_alternative<bool>(right);
    if (flags) {
        const auto leftFlag = jet::flagOf(left);
        const auto rightFlag = jet::flagOf(right);
        return leftFlag && leftFlag == rightFlag;
    }
    return jet::textOf(left) == jet::textOf(right);
}

std::weak_ordering compareValues(const jet::Value& left, const jet::Value& right) {
    const int leftRank = rankOf(left);
    const int rightRank = rankOf(right);
    if (leftRank != rightRank) return leftRank <=> rightRank;
    if (leftRank == 0) return std::weak_ordering::equivalent;
    if (leftRank == 1) return compareNumbers(left, right);
    const auto* leftText = std::get_if<std::string>(&left);
    const auto* rightText = std::get_if<std::string>(&right);
    if (leftText != nullptr && rightText != nullptr) return *leftText <=> *rightText;
    return jet::textOf(left) <=> jet::textOf(right);
}

}  // namespace stelvan::model
