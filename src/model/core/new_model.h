// A model of one's own, started from a shipped template.
#pragma once

#include <filesystem>

namespace stelvan::model {

enum class Template { Standard, Demo };

/// Makes `folder`/gem.mdb, a writable copy of the template, whose settings that name files point
/// into `folder` (made if need be, with the folder and the file of the log). Never replaces a
/// model. Returns the model's absolute path. Throws what is derived from std::exception where the
/// templates are missing, a model is there already, or it cannot be written; no model is left then.
[[nodiscard]] std::filesystem::path newModel(const std::filesystem::path& folder, Template from);

}  // namespace stelvan::model
