// Three versions of a model become one: by item, by field, by link.
//
// What one side changed against the base is taken; what both changed alike is taken once. All else
// is a conflict: a field that both changed differently; an item that one side removed while the
// other changed it, its links, or linked to it; a list whose order cannot be had from both (see
// merge_lists.h). A column or table that one side's file does not have is no change of that side.
//
// Places in a list that both sides changed are numbered anew, without gaps, from the smallest
// number that either side begins with. Without conflicts, swapping the sides gives the same model.
// What comes of two good models need not be one: check() judges that.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/compare/merge_lists.h"
#include "model/core/model.h"

namespace stelvan::model {

struct Conflict {
    std::string item;  // itemText()
    std::string what;  // a column; "order of variables"; empty for the item as a whole
    std::string base;  // what each version says there, in words
    std::string ours;
    std::string theirs;
};

struct Merge {
    Model merged;  // with the columns and row numbers of ours; new rows have none
    std::vector<Conflict> conflicts;
};

/// Conflicts are decided as the given side has it, in favour of ours where nothing is given, so
/// that `merged` is always whole. `merged` has a column or table beyond those of ours only where
/// theirs says something there that must not be lost. The rows of all three stand in their order
/// (read, sortRows).
[[nodiscard]] Merge merge(Model base, Model ours, Model theirs, std::optional<Side> decide);

}  // namespace stelvan::model
