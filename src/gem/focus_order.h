// The keyboard's way through the property frames: where Tab and Enter lead from a control, and
// where they lead with Shift.
#pragma once

#include <span>
#include <string_view>

#include "gem/kinds.h"

namespace stelvan::gem {

/// One control's place. Fields have theirs in their facts; this is the whole way, fields first.
struct FocusStep {
    Control control;
    Neighbours around;
    std::string_view reportedAs = {};  // where a handler reports under another name than its own
};

[[nodiscard]] std::span<const FocusStep> focusOrder();

/// The control after `from`, or before it; None where it has no place on the way.
/// `formatEnabled`: whether cmbVarFormat can be reached.
[[nodiscard]] Control neighbourOf(Control from, bool backwards, bool formatEnabled);

}  // namespace stelvan::gem
