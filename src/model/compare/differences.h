// What differs between two models, item by item: fields and links, not rows.
//
// Items are the same item when they have the same identifier in the same part (limits: of the same
// variable, with the same number). Of several with one identifier those that say the same belong
// together, then those of the same name, then the first to the first. Values are compared by what
// they say (sameValue), so that two files with different column types can be equal; a column that
// one side does not have says Null there, and a missing table is an empty one.
//
// The links of an owner are a list: what was added to it, what removed, and of the rest as few as
// can be that stand elsewhere in its order. A place that only follows from these (all behind a new
// link move up by one, or leave a gap where one was) is no change of its own; any other is. So
// there are no differences exactly where both sides say the same.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/core/model.h"

namespace stelvan::model {

enum class Change : std::uint8_t { Added, Removed, Changed };

struct FieldChange {
    std::string column;
    jet::Value before;  // Null where the item is new, or the column missing
    jet::Value after;
};

struct LinkChange {
    enum class Kind : std::uint8_t { Added, Removed, Reordered, Changed };
    Kind kind = Kind::Added;
    Part part = Part::EventReports;
    jet::Value target;
    std::string targetName;  // empty where it leads nowhere
    jet::Value before;       // its place; Null where it had or has none
    jet::Value after;
    std::vector<FieldChange> fields;  // what link rows hold besides owner, target and place
};

struct ItemChange {
    Change change = Change::Changed;
    Part part = Part::CustomVariables;  // for links without an owner, the part of the links
    jet::Value id;                      // for links without an owner, the one that they name
    jet::Value place;                   // of a limit, its number; Null for all else
    std::string name;                   // the new one where it changed
    std::vector<FieldChange> fields;    // of an added or removed item, all that it holds but Nulls
    std::vector<LinkChange> links;      // removed ones in their old order, then all else in the new
    std::string table;                  // as the file spells it
};

/// In the order of parts and identifiers; empty where the models say the same. The rows of both
/// stand in their order (read, sortRows).
[[nodiscard]] std::vector<ItemChange> differences(const Model& before, const Model& after);

/// The same one after the other, for where all of them together would take too much memory.
using TakeChange = std::function<void(ItemChange&&)>;
void differences(const Model& before, const Model& after, const TakeChange& take);

}  // namespace stelvan::model
