// Everything behind the controls of frmMain, built from the bottom up; later members use earlier
// ones.
#pragma once

#include "browser/category_table.h"
#include "browser/category_tree.h"
#include "browser/grid_view.h"
#include "browser/record_view.h"
#include "checks/exception_box.h"
#include "checks/field_checks.h"
#include "checks/record_checks.h"
#include "checks/value_checks.h"
#include "checks/variable_format.h"
#include "db/operations.h"
#include "editing/control_access.h"
#include "editing/edit_commands.h"
#include "editing/focus_chain.h"
#include "editing/save_record.h"
#include "form/focus_watch.h"
#include "gem/error_catalogue.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "links/selection_list.h"
#include "settings/setting_inputs.h"

namespace stelvan::app {

/// What the subsystems are built on; all of it belongs to the window.
struct Ground {
    QWidget& window;
    form::Dialogs& dialogs;
    base::ErrorInfo& errors;
    form::MainState& state;
    db::DataSource& adoGEM;
    form::MainForm& form;
};

struct Subsystems {
    explicit Subsystems(const Ground& on);

    browser::CategoryTable categories;
    gem::ErrorCatalogue catalogue;
    db::Operations operations;
    checks::ExceptionBox exceptionBox;
    checks::RecordChecks recordChecks;
    checks::VariableFormat variableFormat;
    checks::ValueChecks valueChecks;
    checks::FieldChecks fieldChecks;
    links::SelectionLists selectionLists;
    links::EventReports eventReports;
    links::ReportVariables reportVariables;
    links::ListChildren listChildren;
    settings::SettingInputs settingInputs;
    browser::RecordView recordView;
    browser::GridView gridView;
    browser::CategoryTree categoryTree;
    editing::ControlAccess access;
    editing::EditContext editContext;
    editing::EditCommands editCommands;
    editing::SaveRecord saveRecord;
    editing::FocusChain focusChain;
    form::FocusWatch focusWatch;
};

}  // namespace stelvan::app
