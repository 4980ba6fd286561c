// How the weights of the file's text order are kept: runs of code units, and what one run says.
#pragma once

#include <cstdint>

namespace stelvan::jet::collation {

enum class WeightKind : std::uint8_t {
    Letter,      // has primary bytes: everything that is read as a sign of its own
    Modifier,    // changes the secondary weight of the letter before it
    Unprintable  // counts only after all letters and accents
};

struct WeightShape {
    WeightKind kind;
    std::uint8_t primarySize;    // bytes
    std::uint8_t elements;       // letters of the order that the unit stands for
    std::uint8_t secondarySize;  // bytes that are given; elements without any count as 02
    std::uint8_t kana;           // 1 or 2 for the two kinds of kana, else 0
};

struct WeightRun {
    std::uint16_t first;
    std::uint16_t count;
    std::int8_t step;
    std::uint8_t shape;
    std::uint32_t primary;  // big-endian number of primarySize bytes
    std::uint16_t extra;    // secondary bytes, amount of a modifier, or code of an unprintable
};

}  // namespace stelvan::jet::collation
