// What a write changes, item by item.
#pragma once

#include "model/compare/differences.h"
#include "model/core/write.h"

namespace stelvan::model {

/// The differences between a plan's two states. What is the same in both is let go of before they
/// are compared: of many variables mostly few change. Sorts the rows of `plan.after`, after which
/// it can be carried out no more.
void differences(WritePlan plan, const TakeChange& take);

}  // namespace stelvan::model
