// SECS-II value formats: what a text must look like to be a value of a format, and how the values
// of one variable stand to each other. Plain functions over texts; faults are catalogue codes.
//
// A number that its 32-bit or floating type cannot hold is no fault but an overflow:
// RunTimeError 6.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gem/error_catalogue.h"

namespace stelvan::gem {

/// How a format's values are read.
enum class ValueKind {
    Text,       // A
    Boolean,    // BL
    Integer,    // B, U1, U2, U4, I1, I2, I4
    Single,     // F4
    Double,     // F8
    Unchecked,  // U8, I8: numbers without a check of their own
    None        // L, and what is no format at all
};

/// The code compared exactly; what is not in the table has no kind.
[[nodiscard]] ValueKind valueKindOf(std::string_view format);

/// The codes of all formats, in the order in which they are offered.
[[nodiscard]] std::span<const std::string_view> formatCodes();
/// What the format box of a category offers: an empty text first, then every format, for equipment
/// constants all but the list. Nothing in the other categories, which only show what is stored.
[[nodiscard]] std::vector<std::string_view> formatsOffered(std::int16_t category);

/// Whether a variable of this format is a list: "L", outer blanks and letter case apart.
[[nodiscard]] bool isList(std::string_view format);

/// Which of the fields beside it a format opens. Those that it closes are emptied, unless it is no
/// known format at all.
struct OpenedFields {
    bool limits = false;
    bool unit = false;
    bool values = false;  // value and default value
    bool emptiesClosed = false;
};
/// The code compared exactly; nothing is opened by an unknown one.
[[nodiscard]] OpenedFields openedBy(std::string_view format);

/// Formats whose values are numbers; a blank limit of theirs is stored as 0.
[[nodiscard]] bool isNumericFormat(std::string_view format);

/// The chosen format as the rules compare it: trimmed and in upper case.
[[nodiscard]] std::string formatCode(std::string_view text);

/// The fault of `text` as a value of `format`, 0 when it is one; nothing when there is nothing to
/// check: an empty text, or a format without a check.
[[nodiscard]] std::optional<ErrorCode> checkValue(std::string_view text, std::string_view format);

/// Whether a minimum lies above a maximum; both are numeric. Compared as 32-bit integers, for F4
/// and F8 as floating-point numbers. RunTimeError 6 for an integer beyond 32 bits (possible with U8
/// and I8).
[[nodiscard]] bool minAboveMax(std::string_view min, std::string_view max, std::string_view format);

/// Whether a value lies outside its limits, themselves included in the range. Limits and values
/// that are not numeric are not compared. Exact decimal comparison, so it never overflows.
[[nodiscard]] bool outsideLimits(std::string_view value, std::string_view min,
                                 std::string_view max);

/// Whether the digits of `second` are more than those of `first` leave room for: false when either
/// is empty, true when the second is longer; at equal length decided by the first digit that
/// differs, true when the first text's is the greater. Kept beside the others; no field uses it.
[[nodiscard]] bool lCheckOverflow(std::string_view first, std::string_view second);

/// Whether the text is a row of two-digit hexadecimal bytes separated by single blanks. Kept beside
/// the others; no field uses it.
[[nodiscard]] bool lCheckHex(std::string_view text);

}  // namespace stelvan::gem
