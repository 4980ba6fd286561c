// Models from wherever somebody names them.
#pragma once

#include <filesystem>

#include "model/core/model.h"

namespace stelvan::model {

/// The model in a file, or in a folder of texts. Throws jet::Error, Refusal or std::runtime_error,
/// the text beginning with the path that was named: where there are several, they could not be told
/// apart otherwise.
[[nodiscard]] Model readModel(const std::filesystem::path& path);

}  // namespace stelvan::model
