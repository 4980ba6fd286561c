#include "gem/formats.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "base/number.h"
#include "base/text.h"
#include "gem/categories.h"

namespace stelvan::gem {

namespace {

struct FormatRow {
    std::string_view code;
    ValueKind kind;
    OpenedFields opens;
    std::int32_t lowest = 0;  // integers
    std::int32_t highest = 0;
    ErrorCode fault = NO_EXCEPTION;
};

constexpr std::int32_t kLowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest32 = std::numeric_limits<std::int32_t>::max();

constexpr OpenedFields kAll = {true, true, true, true};
constexpr OpenedFields kAllButUnit = {true, false, true, true};
constexpr OpenedFields kValues = {false, false, true, true};
constexpr OpenedFields kNone = {false, false, false, true};

// U4 ends with the signed 32 bits in which it is read, so its upper limit, like both of I4, is
// never met: the conversion overflows first.
constexpr FormatRow kFormats[] = {
    {"A", ValueKind::Text, kValues},
    {"B", ValueKind::Integer, kAllButUnit, 0, 255, SECS_B_INVALID_RANGE},
    {"BL", ValueKind::Boolean, kValues},
    {"F4", ValueKind::Single, kAll},
    {"F8", ValueKind::Double, kAll},
    {"I1", ValueKind::Integer, kAll, -128, 127, SECS_I1_INVALID_RANGE},
    {"I2", ValueKind::Integer, kAll, -32768, 32767, SECS_I2_INVALID_RANGE},
    {"I4", ValueKind::Integer, kAll, kLowest32, kHighest32, SECS_I4_INVALID_RANGE},
    {"I8", ValueKind::Unchecked, kAll},
    {"L", ValueKind::None, kNone},
    {"U1", ValueKind::Integer, kAll, 0, 255, SECS_U1_INVALID_RANGE},
    {"U2", ValueKind::Integer, kAll, 0, 65535, SECS_U2_INVALID_RANGE},
    {"U4", ValueKind::Integer, kAll, 0, kHighest32, SECS_U4_INVALID_RANGE},
    {"U8", ValueKind::Unchecked, kAll},
};

constexpr auto kCodes = [] {
    std::array<std::string_view, std::size(kFormats)> codes{};
    for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = kFormats[i].code;
    return codes;
}();

constexpr std::string_view kListFormat = "L";

constexpr float kLargestF4 = 3.4e38F;
constexpr double kLargestF8 = 1.7e308;

const FormatRow* rowOf(std::string_view format) {
    const auto* const row = std::find_if(std::begin(kFormats), std::end(kFormats),
                                         [&](const FormatRow& r) { return r.code == format; });
    return row == std::end(kFormats) ? nullptr : row;
}

ErrorCode checkInteger(std::string_view text, const FormatRow& row) {
    if (base::contains(text, '.')) return REQUIRE_INTEGER;
    const std::int32_t value = base::toInt32(text);
    return value < row.lowest || value > row.highest ? row.fault : NO_EXCEPTION;
}

ErrorCode checkNumber(std::string_view text, const FormatRow& row) {
    if (!base::isNumeric(text)) return REQUIRE_NUMERIC;
    if (row.kind == ValueKind::Integer) return checkInteger(text, row);
    if (row.kind == ValueKind::Single) {
        const float value = base::toSingle(text);
        return value < -kLargestF4 || value > kLargestF4 ? SECS_F4_INVALID_RANGE : NO_EXCEPTION;
    }
    const double value = base::toDouble(text);
    return value < -kLargestF8 || value > kLargestF8 ? SECS_F8_INVALID_RANGE : NO_EXCEPTION;
}

ErrorCode checkBoolean(std::string_view trimmed) {
    const std::string word = base::upperCase(trimmed);
    return word == "TRUE" || word == "FALSE" ? NO_EXCEPTION : SECS_BL_INVALID_RANGE;
}

bool isHexByte(std::string_view piece) {
    return piece.size() == 2 &&
           piece.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

}  // namespace

ValueKind valueKindOf(std::string_view format) {
    const FormatRow* const row = rowOf(format);
    return row == nullptr ? ValueKind::None : row->kind;
}

std::span<const std::string_view> formatCodes() {
    return kCodes;
}

std::vector<std::string_view> formatsOffered(std::int16_t category) {
    if (!isCustomVariable(category)) return {};
    std::vector<std::string_view> offered{""};
    for (const std::string_view code : kCodes)
        if (category != CSTVEC || code != kListFormat) offered.push_back(code);
    return offered;
}

bool isList(std::string_view format) {
    return formatCode(format) == kListFormat;
}

OpenedFields openedBy(std::string_view format) {
    const FormatRow* const row = rowOf(format);
    return row == nullptr ? OpenedFields{} : row->opens;
}

bool isNumericFormat(std::string_view format) {
    const ValueKind kind = valueKindOf(format);
    return kind == ValueKind::Integer || kind == ValueKind::Single || kind == ValueKind::Double ||
           kind == ValueKind::Unchecked;
}

std::string formatCode(std::string_view text) {
    return base::upperCase(base::trimBlanks(text));
}

std::optional<ErrorCode> checkValue(std::string_view text, std::string_view format) {
    const std::string_view trimmed = base::trimBlanks(text);
    const FormatRow* const row = rowOf(format);
    if (trimmed.empty() || row == nullptr) return std::nullopt;
    if (row->kind == ValueKind::None || row->kind == ValueKind::Unchecked) return std::nullopt;
    if (row->kind == ValueKind::Text) return NO_EXCEPTION;
    if (base::contains(trimmed, ' ')) return SPACE_BETWEEN;
    return row->kind == ValueKind::Boolean ? checkBoolean(trimmed) : checkNumber(trimmed, *row);
}

bool minAboveMax(std::string_view min, std::string_view max, std::string_view format) {
    switch (valueKindOf(format)) {
        case ValueKind::Integer:
        case ValueKind::Unchecked:
            return base::toInt32(min) > base::toInt32(max);
        case ValueKind::Single:
        case ValueKind::Double:
            return base::toDouble(min) > base::toDouble(max);
        default:
            return false;
    }
}

bool outsideLimits(std::string_view value, std::string_view min, std::string_view max) {
    if (!base::isNumeric(value)) return false;
    const bool below = base::isNumeric(min) && std::is_lt(base::compareDecimals(value, min));
    return below || (base::isNumeric(max) && std::is_gt(base::compareDecimals(value, max)));
}

bool lCheckOverflow(std::string_view first, std::string_view second) {
    if (first.empty() || second.empty()) return false;
    if (first.size() != second.size()) return second.size() > first.size();
    return first > second;
}

bool lCheckHex(std::string_view text) {
    for (;;) {
        const std::size_t blank = text.find(' ');
        if (!isHexByte(text.substr(0, blank))) return false;
        if (blank == std::string_view::npos) return true;
        text.remove_prefix(blank + 1);
    }
}

}  // namespace stelvan::gem
