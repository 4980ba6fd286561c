// A model published into a file: the interface manual, the equipment data dictionary, its messages.
//
// Each file is there whole or as it was.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "model/core/model.h"
#include "model/core/sink.h"
#include "model/publish/manual.h"
#include "model/publish/sedd.h"

namespace stelvan::model {

/// Throws std::runtime_error where `out` is a model's file, by whatever name.
void requireOther(const std::filesystem::path& out, const std::filesystem::path& file);

/// Writes `out` whole (writeWhole). Throws std::runtime_error where it is the model itself, by
/// whatever name, and what writeWhole throws.
void publishInto(const std::filesystem::path& out, const std::filesystem::path& file,
                 const std::function<void(const Sink&)>& write);

/// The manual, with what a check finds as an annex where `findings`. Throws Refusal for a model
/// without any table, and what `sink` throws.
void publishManual(const Model& model, bool findings, const ManualOptions& options,
                   const Sink& sink, const Progress& progress = {});

/// The dictionary; an empty date in the header is today. Gives what was left out or is told
/// otherwise, a line each. Throws what catalogueOf and writeSedd throw, before anything is written.
[[nodiscard]] std::vector<std::string> publishSedd(const Model& model, SeddHeader header,
                                                   const Sink& sink);

/// The messages; gives what was left out or is empty, a line each. Throws what catalogueOf throws,
/// before anything is written, and what `sink` throws.
[[nodiscard]] std::vector<std::string> publishSml(const Model& model, const Sink& sink);

}  // namespace stelvan::model
