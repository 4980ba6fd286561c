// What the link editors offer to the floors above, made from the checks below them.
#pragma once

#include "checks/checks.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "links/selection_list.h"

namespace stelvan::links {

struct LinkEditors {
    /// `below` must outlive the object.
    explicit LinkEditors(checks::Checks& below)
        : checks(below),
          eventReports(below.window),
          reportVariables(below.window),
          listChildren(below.window),
          selectionLists(below) {}

    /// Empties the lists of all records' own links, so that no fill that stops early leaves another
    /// record's rows.
    void clear() {
        eventReports.clear();
        reportVariables.clear();
        listChildren.clear();
    }

    checks::Checks& checks;
    EventReports eventReports;
    ReportVariables reportVariables;
    ListChildren listChildren;
    SelectionLists selectionLists;
};

}  // namespace stelvan::links
