// The reports that a collection event sends: the pool of all reports and the event's own, in their
// order.
//
// A list that could not be filled is marked so and must not be saved: its missing rows would be
// deleted.
#pragma once

#include <string>

#include "base/error_info.h"
#include "db/operations.h"
#include "form/frames.h"

namespace stelvan::links {

class EventReports {
public:
    EventReports(const form::EvtFrame& frame, db::Operations& operations);

    /// Shows or hides the pool and its buttons; a shown pool is filled anew, a hidden one keeps its
    /// rows.
    void lDispRptListEditor(bool show);

    /// Fills lvwRptList with the reports of the event in txtEvtID. GEM and custom events share one
    /// link table, so `gem` changes nothing.
    void lUpdateEvtRptList(bool gem);

    /// Empties lvwRptList, as for an event that is new or gone.
    void clear();
    /// False after a fill that failed, until one succeeds.
    [[nodiscard]] bool filled() const { return filled_; }

    /// Replaces the event's link rows by the rows of lvwRptList, 1 to n. False when an operation
    /// failed and has reported it; other failures are thrown. Runs inside the caller's unit of
    /// work.
    bool saveLinks(const std::string& eventId);

private:
    const form::EvtFrame& frame_;
    db::Operations& operations_;
    base::ErrorInfo& errors_;
    bool filled_ = true;
};

}  // namespace stelvan::links
