// Two lists side by side: which entries of the one are which of the other, and which of those kept
// their order.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/compare/identity.h"

namespace stelvan::model {

struct Alignment {
    struct Partner {
        std::size_t after;
        bool kept;  // in order with all others that are kept; else it stands elsewhere now
    };
    std::vector<std::optional<Partner>> partners;  // for each entry before; nothing: removed
    std::vector<bool> isNew;                       // for each entry after
};

/// Entries may be there several times. As many as possible are kept, in lists with very many
/// doubles at least as many as keep their order when the first is taken for the first.
[[nodiscard]] Alignment align(std::span<const Key> before, std::span<const Key> after);

}  // namespace stelvan::model
