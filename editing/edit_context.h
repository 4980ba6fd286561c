// What adding, editing, saving and deleting work with: the window's controls and state, and the subsystems
// below. Everything is owned by the main window and outlives its users.
#pragma once

#include "app/form/dialogs.h"
#include "app/form/frames.h"
#include "app/form/main_state.h"
#include "db/operations.h"
#include "validation/reporting/error_info.h"

namespace stelvan::validation {
class ExceptionBox;
class FieldChecks;
class VariableFormat;
}  // namespace stelvan::validation
namespace stelvan::links {
class EventReports;
class ListChildren;
class ReportVariables;
}  // namespace stelvan::links
namespace stelvan::settings {
class SettingInputs;
}
namespace stelvan::browser {
class RecordView;
}

namespace stelvan::editing {

class ControlAccess;

struct EditContext {
    const form::MainForm& form;
    form::MainState& state;
    ErrorInfo& errors;
    db::Operations& operations;
    form::Dialogs& dialogs;
    validation::ExceptionBox& exceptionBox;
    validation::VariableFormat& variableFormat;
    validation::FieldChecks& fieldChecks;
    links::EventReports& eventReports;
    links::ReportVariables& reportVariables;
    links::ListChildren& listChildren;
    settings::SettingInputs& settingInputs;
    browser::RecordView& recordView;
    ControlAccess& access;
};

}  // namespace stelvan::editing
