// What the checks offer to the floors above, made from the window that they judge.
#pragma once

#include "checks/alarm_links.h"
#include "checks/event_choice.h"
#include "checks/exception_box.h"
#include "checks/field_checks.h"
#include "checks/record_checks.h"
#include "checks/record_fields.h"
#include "checks/variable_format.h"

namespace stelvan::checks {

struct Checks {
    /// `below` must outlive the object.
    explicit Checks(form::Window& below)
        : window(below),
          box(below, catalogue),
          records(below.form, box),
          recordFields(below),
          format(below, recordFields, records),
          alarmLinks(below, recordFields),
          eventChoice(below, recordFields, records),
          fields(below, *this) {}

    form::Window& window;
    gem::ErrorCatalogue catalogue;  // empty until lInitErrInfo() fills it at start-up
    ExceptionBox box;
    RecordChecks records;
    RecordFields recordFields;
    VariableFormat format;
    AlarmLinks alarmLinks;
    EventChoice eventChoice;
    FieldChecks fields;
};

}  // namespace stelvan::checks
