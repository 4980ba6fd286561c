// The schema of a model as text (data/schema.txt explains the form), read into what the engine
// creates.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/database.h"

namespace stelvan::data {

struct Schema {
    jet::DateTime created;
    std::vector<jet::TableSpec> tables;
    std::vector<jet::RelationshipInfo> relationships;
};

/// YYYY-MM-DDThh:mm:ss. Throws std::runtime_error.
[[nodiscard]] jet::DateTime dateOf(const std::string& text);

/// Throws std::runtime_error that names the line.
[[nodiscard]] Schema parseSchema(std::string_view text);

}  // namespace stelvan::data
