// The equipment's GEM interface manual: all that a model says about the interface, as one page for
// people who write or run a host.
//
// The page needs nothing beside itself: styles, script and pictures are in it, and it asks for
// nothing. The same model and options give the same bytes.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "model/check/finding.h"
#include "model/core/model.h"
#include "model/core/progress.h"
#include "model/core/sink.h"

namespace stelvan::model {

/// What the cover says beside the model; empty: nothing.
struct ManualOptions {
    std::string title = {};  // empty: made of the equipment's name
    std::string maker = {};
    std::string model = {};    // of the equipment, as it is sold
    std::string version = {};  // of the equipment's software, as it is sold
    std::string date = {};     // any text; without it the page tells no date
};

/// Writes the page to `sink` piece by piece. Without findings the annex about them is left out; an
/// empty list says that nothing was found.
void writeManual(const Model& model, const std::optional<std::span<const Finding>>& findings,
                 const ManualOptions& options, const Sink& sink, const Progress& progress = {});

}  // namespace stelvan::model
