// Models from wherever the command line names them.
#pragma once

#include <filesystem>

#include "model/core/model.h"

namespace stelvan::gemdb {

/// The model in a file, or in a folder of texts. Throws jet::Error, model::Refusal or
/// std::runtime_error, the text beginning with the path that was named: verbs with several of them
/// could not be told apart otherwise.
[[nodiscard]] model::Model readModel(const std::filesystem::path& path);

}  // namespace stelvan::gemdb
