// A model as text: one file for each kind of item, or all of them as one stream. See layout.h.
//
// The same model gives the same bytes, wherever the file keeps its rows.
#pragma once

#include <filesystem>

#include "model/core/model.h"
#include "model/core/progress.h"
#include "model/core/sink.h"

namespace stelvan::model {

/// Writes the files of a model into a folder, which is made where it is missing; each file is there
/// whole or as it was. A file of limits that is left from another model goes, other files of the
/// folder stay. Rows stand in their order (read, sortRows). Throws Refusal where the model has no
/// table at all, and what writeWhole throws.
void exportText(const Model& model, const std::filesystem::path& folder,
                const Progress& progress = {});

/// The same as one text, itself a TOML document. Throws Refusal as above, and what `sink` throws.
void streamText(const Model& model, const Sink& sink);

}  // namespace stelvan::model
