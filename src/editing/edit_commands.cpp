#include "editing/edit_commands.h"

#include <QPushButton>

#include "browser/record_view.h"
#include "checks/exception_box.h"
#include "checks/field_checks.h"
#include "checks/variable_format.h"
#include "editing/control_access.h"
#include "editing/record_position.h"
#include "form/text.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "settings/setting_inputs.h"

namespace stelvan::editing {

using form::EditMode;

bool EditCommands::recordShown() const {
    return at_.state.current.onRecord();
}

void EditCommands::cmdUpdate_Click() {
    bool begun = false;
    at_.errors.trap("cmdUpdate_Click", [&] {
        begun = !recordShown();
        if (begun || !completeDisplay() || !mayEdit()) return;
        rememberPlace();
        loadNames();
        at_.state.editMode = EditMode::Editing;
        openInputs();
        begun = true;
        beginAt(at_.state.category);
    });
    if (!begun) backToBrowsing("cmdUpdate_Click");
}

bool EditCommands::mayEdit() const {
    // Shown whole, the record may turn out to be a GEM list or a reserved report.
    return at_.form.nav.cmdUpdate->isEnabled();
}

bool EditCommands::completeDisplay() {
    if (!at_.recordView.incomplete()) return true;
    at_.recordView.displayNullsAsEmpty();
    if (at_.recordView.incomplete()) return false;
    // The identifier and the format shown so far may have been those of the record before.
    at_.recordView.refreshLists();
    at_.access.lSetEditMode(at_.state.category, false);
    return true;
}

void EditCommands::rememberPlace() {
    form::MainState& state = at_.state;
    const db::Recordset& records = *state.current.records;
    state.savedPosition = state.current.position;
    state.savedBookmark.reset();
    if (!records.bof() && !records.eof()) state.savedBookmark = records.bookmark();
}

void EditCommands::loadNames() {
    form::MainState& state = at_.state;
    const auto name = [&](const char* column) {
        return db::toTextOrEmpty(state.current.records->field(column));
    };
    if (state.category == form::CSTALM) state.loadedAlarmName = name("alm_name");
    if (state.category == form::CSTEVT) state.loadedEventName = name("evt_name");
    if (form::isVariable(state.category)) state.loadedVariableName = name("var_name");
    if (state.category == form::CSTRPT) state.loadedReportName = name("rpt_name");
}

void EditCommands::openInputs() {
    at_.state.checksEnabled = true;
    at_.exceptionBox.clear();
    at_.access.lSetEditMode(at_.state.category, true);
    at_.access.lSetCtrlAccess(at_.state.category, false);
    at_.access.lInitCtrlForEdit();
    at_.fieldChecks.beginEdit();
    if (form::isVariable(at_.state.category)) at_.listChildren.beginEditing();
}

void EditCommands::beginAt(std::int16_t category) {
    const form::MainForm& form = at_.form;
    switch (category) {
        case form::GEMEVT:
            form.evt.chkEvtEnable->setFocus();
            break;
        case form::GEMVDV:
        case form::GEMSDV:
        case form::GEMVEC:
            form.var.txtVarDefValue->setFocus();
            break;
        case form::CSTALM:
            form.alm.txtAlmName->setFocus();
            break;
        case form::CSTEVT:
            at_.eventReports.lDispRptListEditor(true);
            form.evt.txtEvtName->setFocus();
            break;
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            form.var.txtVarName->setFocus();
            at_.variableFormat.lVarSetFormatRight();
            break;
        case form::GEMSTT:
            at_.settingInputs.lSttSetRightByRecord();
            at_.settingInputs.lInitSttInput(true);
            break;
        case form::CSTRPT:
            at_.reportVariables.lDispVarListEditor(true);
            at_.reportVariables.beginEditing();
            form.rpt.txtRptName->setFocus();
            break;
        default:
            break;
    }
}

void EditCommands::cmdNew_Click() {
    bool begun = false;
    at_.errors.trap("cmdNew_Click", [&] {
        form::MainState& state = at_.state;
        begun = state.current.records == nullptr;
        if (begun) return;
        rememberPlace();
        state.editMode = EditMode::Adding;
        state.current.records->addNew();
        state.current.position = state.current.records->recordCount();
        at_.recordView.lUpdateNavigator();
        at_.recordView.lClearField();
        openInputs();
        begun = true;
        beginNewAt(state.category);
    });
    if (!begun) backToBrowsing("cmdNew_Click");
}

void EditCommands::beginNewAt(std::int16_t category) {
    const form::MainForm& form = at_.form;
    const auto propose = [&](form::Field& field, const char* column, const char* table) {
        field.setText(form::toQt(at_.operations.lGetNextID(column, table)));
    };
    switch (category) {
        case form::CSTALM:
            propose(*form.alm.txtAlmID, "alm_id", "secs_alarm");
            form.alm.txtAlmName->setFocus();
            break;
        case form::CSTEVT:
            at_.eventReports.clear();
            at_.eventReports.lDispRptListEditor(true);
            propose(*form.evt.txtEvtID, "evt_id", "secs_cusevent");
            form.evt.txtEvtName->setFocus();
            break;
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            at_.listChildren.lUpdateVarChild(false);
            closeValueFields();
            propose(*form.var.txtVarID, "var_id", "secs_cusvar");
            form.var.txtVarName->setFocus();
            break;
        case form::CSTRPT:
            at_.reportVariables.clear();
            at_.reportVariables.lDispVarListEditor(true);
            propose(*form.rpt.txtRptID, "rpt_id", "secs_report");
            form.rpt.txtRptName->setFocus();
            break;
        default:
            break;
    }
}

void EditCommands::closeValueFields() {
    // They open when a format is chosen.
    for (form::Field* field : at_.variableFormat.dependents()) {
        field->setEnabled(false);
        field->setColour(form::Colour::WindowBackground);
        field->setText(QString());
    }
}

void EditCommands::backToBrowsing(const char* procedure) {
    at_.errors.trap(procedure, [&] {
        form::MainState& state = at_.state;
        if (state.editing() && state.current.records != nullptr) {
            if (state.current.records->editPending()) state.current.records->cancelUpdate();
            state.current.position = state.savedPosition;
        }
    });
    at_.state.editMode = EditMode::Browsing;
    at_.listChildren.endEditing();
    at_.recordView.lUpdateNavigator();
    at_.access.lSetEditMode(at_.state.category, false);
    at_.access.lSetCtrlAccess(at_.state.category, true);
}

void EditCommands::cmdCancel_Click() {
    form::MainState& state = at_.state;
    if (!state.editing()) return;
    state.checksEnabled = false;
    at_.listChildren.endEditing();
    if (state.current.records != nullptr) {
        // A failure is shown, and the cancel goes on: it must never leave the window half in an
        // edit.
        if (!at_.errors.trap("cmdCancel_Click", [&] { returnToRecord(); }))
            at_.errors.trap("cmdCancel_Click", [&] { moveToFirst(state.current); });
    }
    at_.recordView.lUpdateNavigator();
    at_.recordView.lDisplayField();
    at_.access.lSetEditMode(state.category, false);
    at_.access.lSetCtrlAccess(state.category, true);
    showStoredLists();
    at_.exceptionBox.clear();
    state.editMode = EditMode::Browsing;
    if (state.category == form::GEMSTT) at_.settingInputs.lSttSetRightByRecord();
    state.checksEnabled = true;
    at_.access.focusBrowsing();
}

void EditCommands::returnToRecord() {
    form::MainState& state = at_.state;
    db::Recordset& records = *state.current.records;
    if (records.editPending()) records.cancelUpdate();
    if (records.recordCount() < 1) {
        at_.access.lClearInput(state.category);
        return;
    }
    if (!state.savedBookmark) {
        moveToFirst(state.current);
        return;
    }
    records.setBookmark(*state.savedBookmark);
    state.current.position = state.savedPosition;
    if (!state.recordIsStale) return;
    state.recordIsStale = false;
    resynchronise(state.current);
    if (!state.current.onRecord()) moveToFirst(state.current);
}

void EditCommands::showStoredLists() {
    const form::MainState& state = at_.state;
    const bool shown = recordShown();
    if (state.category == form::CSTEVT) {
        if (!shown) at_.eventReports.clear();
        if (shown) at_.eventReports.lUpdateEvtRptList(false);
        at_.eventReports.lDispRptListEditor(false);
    } else if (form::isCustomVariable(state.category)) {
        if (!shown) at_.listChildren.clear();
        // The one place where a lower-case format is not taken for a list.
        at_.listChildren.lUpdateVarChild(shown &&
                                         at_.form.var.cmbVarFormat->text() == QLatin1String("L"));
        at_.listChildren.lDispChildEditor(false);
    } else if (state.category == form::GEMSTT) {
        at_.settingInputs.lInitSttInput(false);
    } else if (state.category == form::CSTRPT) {
        if (!shown) at_.reportVariables.clear();
        if (shown) at_.reportVariables.lUpdateRptVarList();
        at_.reportVariables.lDispVarListEditor(false);
    }
}

}  // namespace stelvan::editing
