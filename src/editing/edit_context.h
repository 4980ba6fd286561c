// What adding, editing, saving and deleting work with: the window's controls and state, and the
// subsystems below. Everything is owned by the main window and outlives its users.
#pragma once

#include "base/error_info.h"
#include "db/operations.h"
#include "form/dialogs.h"
#include "form/frames.h"
#include "form/main_state.h"

namespace stelvan::checks {
class ExceptionBox;
class FieldChecks;
class VariableFormat;
}  // namespace stelvan::checks
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
    base::ErrorInfo& errors;
    db::Operations& operations;
    form::Dialogs& dialogs;
    checks::ExceptionBox& exceptionBox;
    checks::VariableFormat& variableFormat;
    checks::FieldChecks& fieldChecks;
    links::EventReports& eventReports;
    links::ReportVariables& reportVariables;
    links::ListChildren& listChildren;
    settings::SettingInputs& settingInputs;
    browser::RecordView& recordView;
    ControlAccess& access;
};

}  // namespace stelvan::editing
