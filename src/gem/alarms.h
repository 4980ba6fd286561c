// The two collection events of an alarm: identifier and name of the one that sets it and of the one
// that clears it. The two sides must differ; identifier and name of one side belong together.
#pragma once

#include <span>

#include "gem/controls.h"

namespace stelvan::gem {

/// One of the four fields with its neighbours: the same on the other side, and the other of the
/// same side.
struct AlarmEventField {
    Control field;
    Control opposite;
    Control partner;
};

[[nodiscard]] std::span<const AlarmEventField> alarmEventFields();
/// std::logic_error for any other field.
[[nodiscard]] const AlarmEventField& alarmEventField(Control field);

}  // namespace stelvan::gem
