// The order of texts in the file: General Legacy (locale 0x0409, version 0), the only one we can
// compute.
//
// A text becomes a key, and keys compare byte by byte. Letter case and trailing blanks do not
// count, accents count after all letters, hyphens, apostrophes and control characters last of all,
// and what the order has no weight for does not count. Only the first 255 UTF-16 units take part in
// a key. Texts are UTF-8; a lone surrogate may stand as the three bytes of its code unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "jet/rows/column_facts.h"

namespace stelvan::jet {

inline constexpr std::size_t kMaxKeyUnits = 255;

/// Whether keys and comparisons of this order can be computed here.
[[nodiscard]] inline bool canCollate(const SortOrder& order) {
    return order == SortOrder{};
}

/// How far a character that stands for several letters (a sharp s, a ligature) moves what follows
/// it in the late sections of a key. The engine of these files counts its letters; the one of later
/// versions counts it once, and files which that has written to hold such entries.
enum class ExpansionCount { Letters, Once };

/// Appends the value bytes of a text's index key (everything after the flag byte of its part).
void appendTextKey(std::vector<std::uint8_t>& key, std::string_view text, bool ascending,
                   ExpansionCount count = ExpansionCount::Letters);

/// Whether the text's key is that of its letters alone: no other text has a key that is the same up
/// to where letters end, but for one that is greater.
[[nodiscard]] bool hasPlainKey(std::string_view text);

/// Negative, zero or positive as `left` stands before, with or after `right` in the file's order.
/// Zero exactly where the keys are equal, but without the limit of 255 units.
[[nodiscard]] int compareText(std::string_view left, std::string_view right);

[[nodiscard]] inline bool equalText(std::string_view left, std::string_view right) {
    return compareText(left, right) == 0;
}

}  // namespace stelvan::jet
