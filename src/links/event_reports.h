// The reports that a collection event sends: the pool of all reports and the event's own, in their
// order.
//
// A list that could not be filled is marked so and must not be saved: its missing rows would be
// deleted. A fill that fails is reported, and the rest of the window goes on.
#pragma once

#include <optional>
#include <string>

#include "form/window.h"
#include "links/link_rows.h"

namespace stelvan::links {

class EventReports {
public:
    /// `window` must outlive the object.
    explicit EventReports(form::Window& window) : window_(window) {}

    /// Shows or hides the pool and its buttons; a shown pool is filled anew, a hidden one keeps its
    /// rows.
    void lDispRptListEditor(bool show);

    /// Fills lvwRptList with the reports of the event in txtEvtID. GEM and custom events share one
    /// link table, so `gem` changes nothing.
    void lUpdateEvtRptList(bool gem);

    /// An edit begins: the list is read anew, and what the file holds now is what a save may
    /// replace.
    void beginEditing();

    /// Empties lvwRptList, as for an event that is new or gone.
    void clear();
    /// False after a fill that failed, until one succeeds.
    [[nodiscard]] bool filled() const { return filled_; }

    /// Replaces the event's link rows by the rows of lvwRptList, 1 to n. Throws RunTimeError, that
    /// of a changed record where another program changed them since the edit began. Runs inside the
    /// caller's unit of work.
    void saveLinks(const std::string& eventId);

private:
    form::Window& window_;
    bool filled_ = true;
    std::optional<LinkRows> shown_;  // of the record being edited; none of a new one
};

}  // namespace stelvan::links
