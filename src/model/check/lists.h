// List variables and the variables that name one as the list that holds them.
#pragma once

#include <vector>

#include "model/core/cross_reference.h"

namespace stelvan::model {

/// What a custom variable's parent is to it.
enum class Held {
    Free,    // in no list
    InList,  // in a list, as it should be
    NoList,  // in what is no list
    Orphan,  // in what does not exist, or in Null, which no pool offers
    Loop     // in itself, by whatever way
};

/// One answer for each row of the custom variables. Free for all where the file does not know
/// parents.
[[nodiscard]] std::vector<Held> holdings(const Model& model, const CrossReference& references);

/// The children of one list, in their order.
struct ListsChildren {
    Item list;
    std::vector<Item> children;
};
/// Of every list that is there and holds some.
[[nodiscard]] std::vector<ListsChildren> childrenByList(const CrossReference& references);

}  // namespace stelvan::model
