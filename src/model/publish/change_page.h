// What differs between two models as one page that needs nothing beside it: grouped by kind, with
// counts; for the screen, light and dark, and for paper.
#pragma once

#include <span>
#include <string>

#include "model/compare/differences.h"
#include "model/core/sink.h"

namespace stelvan::model {

/// How the two models are called.
struct ComparedSides {
    std::string before;
    std::string after;
};

/// `changes` as differences() gives them. Throws what `sink` throws.
void writeChangePage(std::span<const ItemChange> changes, const ComparedSides& sides,
                     const Sink& sink);

}  // namespace stelvan::model
