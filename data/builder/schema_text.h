// The schema of a model as text (data/schema.txt explains the form), read into what the engine
// creates.
#pragma once

#include <string_view>
#include <vector>

#include "jet/database.h"

namespace stelvan::model {

struct Schema {
    jet::DateTime created;
    std::vector<jet::TableSpec> tables;
};

/// Throws std::runtime_error that names the line.
[[nodiscard]] Schema parseSchema(std::string_view text);

}  // namespace stelvan::model
