// A variable as the SECS-II item that the equipment would send for it now: its format, its value in
// one spelling, and for a list the items of its children.
//
// Everything here can be written as it stands. A value that its format does not take is not in it;
// `fault` says so instead.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/core/cross_reference.h"

namespace stelvan::model {

struct SecsItem {
    Item variable;            // points into the model that the item was made from
    std::string_view format;  // a code of gem::formatCodes(); empty where the variable has none
    /// As secsValue() gives it; nothing for an empty item, and for lists.
    std::optional<std::string> value = {};
    std::vector<SecsItem> items = {};  // of a list, in their order
    /// What is wrong with the variable, empty where nothing is: "its value 300 is no U1".
    std::string fault = {};
};

/// The format code that a variable's text stands for, outer blanks and letter case apart; empty
/// where it is none. The view lasts as long as the program.
[[nodiscard]] std::string_view secsFormat(std::string_view text);

/// A text as value of a format, in the one spelling that goes out: integers as plain decimals,
/// fractions with all digits and no exponent, "TRUE" or "FALSE", texts as they are. What the rules
/// of the editor accept is a value, and beyond 32 bits what the format itself holds (U4, U8, I8).
/// Nothing for all else, and for a list.
[[nodiscard]] std::optional<std::string> secsValue(std::string_view text, std::string_view format);

/// Children nest no deeper than this; SECS-II has no limit, but those who read it have.
inline constexpr int kDeepestList = 50;

/// The item of one variable with its present value. A child that holds its own list is left out and
/// is the list's fault, as is what nests too deeply.
[[nodiscard]] SecsItem secsItem(const Item& variable, const CrossReference& references);

}  // namespace stelvan::model
