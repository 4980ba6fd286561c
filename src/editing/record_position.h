// Keeping the position in step with a record set whose rows others may change or delete.
#pragma once

#include "base/run_time_error.h"
#include "db/current_records.h"
#include "form/main_state.h"

namespace stelvan::editing {

/// Takes over what the file now holds. Rows that others deleted leave the set; the shown record
/// stays the shown one under its new number.
void resynchronise(db::CurrentRecords& current);

/// Shows the first record, or none in an empty set.
void moveToFirst(db::CurrentRecords& current);

/// Runs `write`; where it fails because another program changed or deleted the record, that is
/// noted in the state before the failure goes on its way.
template <class Write>
void noteStale(form::MainState& state, const Write& write) {
    constexpr std::int32_t kRecordChanged = -2147217864;
    try {
        write();
    } catch (const base::RunTimeError& failure) {
        state.recordIsStale = state.recordIsStale || failure.number() == kRecordChanged;
        throw;
    }
}

}  // namespace stelvan::editing
