// Three versions of all lists of links become one, owner by owner.
#pragma once

#include <functional>

#include "model/compare/merge.h"

namespace stelvan::model {

struct LinkRules {
    Side decides = Side::Ours;
    std::function<bool(const Key& owner)> isDecided;  // its list is as the deciding side has it
    std::function<bool(const Key& target)> isLost;    // links to it go, too
};

/// Adds the rows of a part of links to `result.merged`, whose columns are those that
/// columnVersions() gives, and what cannot be decided to `result.conflicts`.
void mergeLinks(Part part, const Model& base, const Model& ours, const Model& theirs,
                const LinkRules& rules, Merge& result);

}  // namespace stelvan::model
