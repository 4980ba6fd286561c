// A file made from another, with a changed model in it: whole or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "model/core/model.h"

namespace stelvan::model {

/// What becomes of a model; nothing where nothing is to be written.
using Rewriting = std::function<std::optional<Model>(Model)>;

/// Gives the model of `source` to `change` and makes `out` a copy of that file which holds the
/// model that comes back. `out` may be `source`, which is then changed as one unit of work; else
/// it is made beside its place and takes it at last. What stands there must be a database that
/// nobody is writing, so that no other file and no unfinished save is lost. Throws jet::Error,
/// Refusal, std::runtime_error, and what `change` throws; `out` is then as before.
void rewrite(const std::filesystem::path& source, const std::filesystem::path& out,
             const Rewriting& change);

}  // namespace stelvan::model
