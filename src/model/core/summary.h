// A model in a few lines: how much of what it holds, and the settings that tell how it talks.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "model/core/model.h"

namespace stelvan::model {

struct Summary {
    struct Count {
        std::string what;  // a category's caption, or "Limits", "Event-report links", ...
        std::size_t rows = 0;
    };
    std::vector<Count> counts;  // every category, in the order of the tree; then what has none
    std::vector<std::pair<std::string, std::string>> settings;  // name and value, where present
};

[[nodiscard]] Summary summaryOf(const Model& model);

}  // namespace stelvan::model
