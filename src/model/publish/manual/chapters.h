// The chapters of the manual, one file each. Every function writes what stands between a heading
// and the next.
#pragma once

#include <string>

#include "model/publish/manual/page.h"

namespace stelvan::model::manual {

/// The title as it was given, or made of what the equipment is called; one line.
[[nodiscard]] std::string titleOf(const Model& model, const ManualOptions& options);

void writeCover(Page& page);
void writeContents(Page& page);
void writeAbout(Page& page);
void writeSettings(Page& page, const Chapter& chapter, const Section& section);
void writeVariables(Page& page, const Chapter& chapter, const Section& section);
void writeEvents(Page& page, const Section& section);
void writeReports(Page& page, const Chapter& chapter, const Section& section);
void writeAlarms(Page& page, const Chapter& chapter, const Section& section);
void writeLimits(Page& page, const Chapter& chapter, const Section& section);
void writeFindings(Page& page);

}  // namespace stelvan::model::manual
