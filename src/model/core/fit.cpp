#include "model/core/fit.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/hex.h"
#include "jet/disk/error.h"
#include "jet/rows/conversion.h"

namespace stelvan::model {
namespace {

using jet::ColumnType;

std::optional<double> fractionOf(const jet::Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* number = std::get_if<float>(&value)) return *number;
    if (const auto* number = std::get_if<double>(&value)) return *number;
    return std::nullopt;
}

bool holdsBytes(ColumnType type) {
    return type == ColumnType::Binary || type == ColumnType::FixedBinary || type == ColumnType::Ole;
}

/// What conversion leaves to others: a number as a date, digits as bytes, numbers without an end.
void prepare(const jet::ColumnInfo& column, jet::Value& value) {
    if (const auto number = fractionOf(value)) {
        if (column.type == ColumnType::DateTime) value = jet::DateTime{*number};
        if (std::isfinite(*number)) return;
        if (column.type == ColumnType::Single) value = static_cast<float>(*number);
        if (column.type == ColumnType::Double) value = *number;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        if (!holdsBytes(column.type)) return;
        if (auto bytes = base::parseHex(*text)) value = jet::Blob(std::move(*bytes));
    }
}

/// Already of the column's type, and surely not too large: most values are.
bool fitsAsItIs(const jet::ColumnInfo& column, const jet::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return column.type == ColumnType::Memo ||
               (column.type == ColumnType::Text && text->size() <= column.length / 2U);
    if (std::holds_alternative<std::int32_t>(value)) return column.type == ColumnType::Long;
    return false;
}

}  // namespace

std::optional<std::string> fit(const jet::ColumnInfo& column, jet::Value& value) {
    if (jet::isNull(value)) {
        if (column.type != ColumnType::Boolean && !column.autoNumber) return std::nullopt;
        return "The column " + column.name + " cannot hold a Null.";
    }
    if (fitsAsItIs(column, value)) return std::nullopt;
    try {
        prepare(column, value);
        value = jet::convertTo(column, std::move(value));
        return std::nullopt;
    } catch (const jet::Error& error) {
        return error.what();
    }
}

std::optional<std::string> brokenProperty(const jet::ColumnInfo& column, const jet::Value& value) {
    if (jet::isNull(value)) {
        if (!column.required) return std::nullopt;
        return "The column " + column.name + " cannot hold a Null.";
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr || !text->empty() || column.allowZeroLength) return std::nullopt;
    return "The column " + column.name + " cannot hold an empty text.";
}

bool identical(const jet::Value& left, const jet::Value& right) {
    if (left.index() != right.index()) return false;
    const auto sameBits = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
               (std::isnan(a) && std::isnan(b));
    };
    if (const auto* number = std::get_if<double>(&left))
        return sameBits(*number, std::get<double>(right));
    if (const auto* number = std::get_if<float>(&left))
        return sameBits(*number, std::get<float>(right));
    if (const auto* date = std::get_if<jet::DateTime>(&left))
        return sameBits(date->days, std::get<jet::DateTime>(right).days);
    return left == right;
}

}  // namespace stelvan::model
