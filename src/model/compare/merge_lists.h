// Three versions of one list become one: what either side added or removed, in an order that keeps
// what either side put where.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/compare/identity.h"

namespace stelvan::model {

/// Who has the last word where both sides cannot be had.
enum class Side : std::uint8_t { Ours, Theirs };

struct MergedList {
    /// Where an entry stands in each version that has it.
    struct Entry {
        std::optional<std::size_t> base, ours, theirs;
    };
    std::vector<Entry> entries;
    std::vector<Entry> removed;  // what the base has and one side or both have not
    bool orderConflict = false;  // decided by the given side
};

/// What either side removed is gone. What both kept stands in the order that either side gave to
/// each two of them; a conflict where that leads in a circle. What one side added follows what it
/// follows there; two that follow the same stand in the order of their keys, each side's together.
/// What both added is added once; a conflict where it follows different entries. Swapping the
/// sides gives the same entries in the same order, except in a conflict.
[[nodiscard]] MergedList mergeLists(std::span<const Key> base, std::span<const Key> ours,
                                    std::span<const Key> theirs, Side decides);

}  // namespace stelvan::model
