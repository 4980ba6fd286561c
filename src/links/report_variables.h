// The variables that a report carries: the pool of all top-level variables and the report's own.
//
// While browsing, the list stands in the text order of its "Order" column; an edit begins by
// putting it in the order of the numbers, since the row order is what a save writes.
#pragma once

#include <string>
#include <vector>

#include "base/error_info.h"
#include "db/operations.h"
#include "form/frames.h"

namespace stelvan::links {

/// Reports 0 to 100 come with the standard: shown, but neither edited nor deleted.
[[nodiscard]] bool isReservedReport(const std::string& reportId);

class ReportVariables {
public:
    ReportVariables(const form::RptFrame& frame, const form::Navigator& navigator,
                    db::Operations& operations);

    /// Shows or hides the pool and its buttons; a shown pool is filled anew, a hidden one keeps its
    /// rows.
    void lDispVarListEditor(bool show);

    /// Fills lvwVarList with the variables of the report in txtRptID; an empty id leaves it as it
    /// is.
    void lUpdateRptVarList();

    /// Save, Cancel, Add New, Edit and Delete by the report shown: 0 to 100 are reserved.
    void lRptSetRightByRecord(bool editing);

    /// Puts the rows in the numeric order of "Order".
    void beginEditing();

    /// Empties lvwVarList, as for a report that is new or gone.
    void clear();
    /// False after a fill that failed, until one succeeds.
    [[nodiscard]] bool filled() const { return filled_; }

    /// Replaces the report's link rows by the rows of lvwVarList, 1 to n; rows of one id and one
    /// loaded order are one link. False when an operation failed and has reported it; other
    /// failures are thrown. Runs inside the caller's unit of work.
    bool saveLinks(const std::string& reportId);

private:
    /// Appends the rows of one variable table; false when they could not be opened (reported).
    bool readPool(const char* sql, const char* gem, std::vector<form::ListRow>& rows);
    bool readList(const char* tables, const char* gem, std::vector<form::ListRow>& rows);

    const form::RptFrame& frame_;
    const form::Navigator& navigator_;
    db::Operations& operations_;
    base::ErrorInfo& errors_;
    bool filled_ = true;
};

}  // namespace stelvan::links
