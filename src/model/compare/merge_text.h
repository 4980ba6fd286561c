// Conflicts in words.
#pragma once

#include <span>

#include "model/compare/merge.h"
#include "model/core/sink.h"

namespace stelvan::model {

/// Each conflict with what the three versions say, one below the other; its first line red where
/// `coloured`.
void writeConflicts(std::span<const Conflict> conflicts, bool coloured, const Sink& sink);

}  // namespace stelvan::model
