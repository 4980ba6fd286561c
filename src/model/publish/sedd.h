// A model as SEMI E172 equipment data dictionary, edition 0225: what a factory's systems read to
// know an equipment's events, variables, constants, alarms, formats, default reports and links.
//
// The whole dictionary leads nowhere out of itself: what refers to something that is not in it is
// left out and noted. Nothing is cut to a length that the standard limits: a header that is too
// long is refused, an alarm text that is stands in the alarm's description.
#pragma once

#include <optional>
#include <string>

#include "model/core/sink.h"
#include "model/publish/catalogue.h"

namespace stelvan::model {

/// What the header says that no table holds.
struct SeddHeader {
    std::optional<std::string> mdln;     // instead of the value of the variable MDLN
    std::optional<std::string> softrev;  // instead of the value of the variable SOFTREV
    std::optional<std::string> equipmentId;
    std::string supplier;
    std::string date;  // of the dictionary, "YYYY-MM-DD"
    std::string description;
    int alarmCode = 0;  // ALCD of every alarm, -128 to 127
};

/// Writes the dictionary, in UTF-8. The same model and header give the same bytes. Adds to `notes`
/// what was left out or is told otherwise. Throws Refusal, before anything is written, for a header
/// that cannot stand, and what `sink` throws.
void writeSedd(const Catalogue& catalogue, const CrossReference& references,
               const SeddHeader& header, const Sink& sink, Notes& notes);

}  // namespace stelvan::model
