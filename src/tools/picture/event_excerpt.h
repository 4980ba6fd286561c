// What of a model an event's picture shows: the event, its reports, and of each report as many
// variables as are drawn. Read by indexes, so that a display does not wait for a large model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jet/database.h"
#include "model/core/model.h"

namespace stelvan::tools {

/// An event as it is on screen, stored or not.
struct ShownEvent {
    model::Part part = model::Part::CustomEvents;
    std::int64_t id = 0;
    std::string name;
    /// Identifiers of its reports in their order; nothing: those that the file links to it.
    std::optional<std::vector<std::int64_t>> reports;
};

/// A model of nothing but that. Rows of reports and variables hold identifier, name and type and
/// say where they were read; of report-variable links all are there, so that they can be counted.
/// Throws jet::Error.
[[nodiscard]] model::Model excerptFor(const ShownEvent& event, jet::Database& database);

}  // namespace stelvan::tools
