// The variables that a report carries: the pool of all top-level variables and the report's own.
//
// While browsing, the list stands in the text order of its "Order" column; an edit begins by
// putting it in the order of the numbers, since the row order is what a save writes. A fill that
// fails is reported, and the rest of the window goes on.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "form/window.h"
#include "links/link_rows.h"

namespace stelvan::links {

class ReportVariables {
public:
    /// `window` must outlive the object.
    explicit ReportVariables(form::Window& window) : window_(window) {}

    /// Shows or hides the pool and its buttons; a shown pool is filled anew, a hidden one keeps its
    /// rows.
    void lDispVarListEditor(bool show);

    /// Fills lvwVarList with the variables of the report in txtRptID; an empty id leaves it as it
    /// is.
    void lUpdateRptVarList();

    /// Save, Cancel, Add New, Edit and Delete by the report shown: 0 to 100 are reserved.
    void lRptSetRightByRecord(bool editing);

    /// An edit begins: the list is read anew, its rows are put in the numeric order of "Order", and
    /// what the file holds now is what a save may replace.
    void beginEditing();
    /// Puts the rows of lvwVarList in the numeric order of "Order", the order that a save writes.
    void sortByNumber();

    /// Empties lvwVarList, as for a report that is new or gone.
    void clear();
    /// False after a fill that failed, until one succeeds.
    [[nodiscard]] bool filled() const { return filled_; }

    /// Replaces the report's link rows by the rows of lvwVarList, 1 to n; rows of one id and one
    /// loaded order are one link. Throws RunTimeError, that of a changed record where another
    /// program changed them since the edit began. Runs inside the caller's unit of work.
    void saveLinks(const std::string& reportId);

private:
    form::Window& window_;
    bool filled_ = true;
    std::optional<LinkRows> shown_;  // of the record being edited; none of a new one
};

}  // namespace stelvan::links
