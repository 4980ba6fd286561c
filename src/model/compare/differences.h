// What differs between two models, item by item: fields and links, not rows.
//
// Items are the same item when they have the same identifier in the same part; of several with one
// identifier the first belongs to the first. Values are compared by what they say (sameValue), so
// that two files with different column types can be equal.
#pragma once

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
    enum class Kind : std::uint8_t { Added, Removed, Reordered };
    Kind kind = Kind::Added;
    Part part = Part::EventReports;
    jet::Value target;
    std::string targetName;  // empty where it leads nowhere
    jet::Value before;       // its place; Null where it had or has none
    jet::Value after;
};

struct ItemChange {
    Change change = Change::Changed;
    Part part = Part::CustomVariables;  // for links without an owner, the part of the links
    jet::Value id;                      // Null for links without an owner
    std::string name;                   // the new one where it changed
    std::vector<FieldChange> fields;    // of a removed item, what it held
    std::vector<LinkChange> links;
};

/// In the order of parts and identifiers; empty where the models are the same.
[[nodiscard]] std::vector<ItemChange> differences(const Model& before, const Model& after);

}  // namespace stelvan::model
