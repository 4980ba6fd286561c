// Everything behind the controls of frmMain, built from the bottom up; later members use earlier ones.
#pragma once

#include "app/form/focus_watch.h"
#include "browser/category_table.h"
#include "browser/category_tree.h"
#include "browser/grid_view.h"
#include "browser/record_view.h"
#include "db/operations.h"
#include "editing/control_access.h"
#include "editing/edit_commands.h"
#include "editing/focus_chain.h"
#include "editing/save_record.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "links/selection_list.h"
#include "settings/setting_inputs.h"
#include "validation/exception_box.h"
#include "validation/field_checks.h"
#include "validation/record_checks.h"
#include "validation/reporting/error_catalogue.h"
#include "validation/value_checks.h"
#include "validation/variable_format.h"

namespace stelvan::app {

/// What the subsystems are built on; all of it belongs to the window.
struct Ground {
    QWidget& window;
    form::Dialogs& dialogs;
    ErrorInfo& errors;
    form::MainState& state;
    db::DataSource& adoGEM;
    form::MainForm& form;
};

struct Subsystems {
    explicit Subsystems(const Ground& on);

    browser::CategoryTable categories;
    ErrorCatalogue catalogue;
    db::Operations operations;
    validation::ExceptionBox exceptionBox;
    validation::RecordChecks recordChecks;
    validation::VariableFormat variableFormat;
    validation::ValueChecks valueChecks;
    validation::FieldChecks fieldChecks;
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
