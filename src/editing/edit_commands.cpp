#include "editing/edit_commands.h"

#include <QLabel>
#include <QPushButton>

#include "db/value_text.h"
#include "editing/record_position.h"
#include "form/text.h"

namespace stelvan::editing {

using form::EditMode;

namespace {

constexpr auto kReadOnly = "The database is read-only: what is changed now cannot be saved.";

}  // namespace

void EditCommands::cmdUpdate_Click() {
    if (!recordShown()) return;
    bool begun = false;
    window_.errors.handle("cmdUpdate_Click", [&] {
        completeDisplay();
        if (!mayEdit()) return;
        rememberPlace();
        loadName();
        window_.state.editMode = EditMode::Editing;
        openInputs();
        begun = true;
        beginEditing();
    });
    if (!begun) backToBrowsing("cmdUpdate_Click");
}

bool EditCommands::mayEdit() const {
    // Shown whole, the record may turn out to be a GEM list or a reserved report.
    return window_.form.nav.cmdUpdate->isEnabled();
}

void EditCommands::completeDisplay() {
    if (!below_.records.incomplete()) return;
    below_.records.displayNullsAsEmpty();
    // The identifier and the format shown so far may have been those of the record before.
    below_.records.refreshLists();
    window_.showButtons();
}

void EditCommands::rememberPlace() {
    form::MainState& state = window_.state;
    const db::Recordset& records = *state.current.records;
    state.savedPosition = state.current.position;
    state.savedBookmark.reset();
    if (!records.bof() && !records.eof()) state.savedBookmark = records.bookmark();
}

void EditCommands::loadName() {
    form::MainState& state = window_.state;
    state.loadedName.clear();
    const gem::Control name = gem::fieldWith(gem::kindOf(state.category), gem::Check::Name);
    if (name == gem::Control::None) return;
    const std::string column(gem::factsOf(name).column);
    state.loadedName = db::toTextOrEmpty(state.current.records->field(column));
}

void EditCommands::openInputs() {
    const std::int16_t category = window_.state.category;
    if (!window_.operations.writable()) window_.form.statusPanel->setText(QLatin1String(kReadOnly));
    window_.state.checksEnabled = true;
    below_.checks.box.clear();
    access_.lSetEditMode(category, true);
    access_.lSetCtrlAccess(category, false);
    access_.lInitCtrlForEdit();
    below_.checks.fields.beginEdit();
    if (gem::isVariable(category)) below_.links.listChildren.beginEditing();
}

void EditCommands::focusFirst() {
    const std::int16_t category = window_.state.category;
    const gem::KindFacts& facts = gem::factsOf(gem::kindOf(category));
    const gem::Control first = gem::isCustom(category) ? facts.first : facts.firstOfStandard;
    if (first != gem::Control::None) window_.form[first].setFocus();
}

void EditCommands::beginEditing() {
    const std::int16_t category = window_.state.category;
    if (category == gem::CSTEVT) {
        below_.links.eventReports.beginEditing();
        below_.links.eventReports.lDispRptListEditor(true);
    } else if (category == gem::CSTRPT) {
        below_.links.reportVariables.beginEditing();
        below_.links.reportVariables.lDispVarListEditor(true);
    }
    focusFirst();
    if (gem::isCustomVariable(category)) below_.checks.format.lVarSetFormatRight();
    if (category == gem::GEMSTT) below_.settings.lInitSttInput(true);
}

void EditCommands::cmdNew_Click() {
    form::MainState& state = window_.state;
    if (state.current.records == nullptr) return;
    bool begun = false;
    window_.errors.handle("cmdNew_Click", [&] {
        rememberPlace();
        state.editMode = EditMode::Adding;
        state.current.records->addNew();
        state.current.position = state.current.records->recordCount();
        below_.records.lUpdateNavigator();
        below_.records.lClearField();
        openInputs();
        begun = true;
        beginAdding();
    });
    if (!begun) backToBrowsing("cmdNew_Click");
}

void EditCommands::beginAdding() {
    const std::int16_t category = window_.state.category;
    if (category == gem::CSTEVT) {
        below_.links.eventReports.clear();
        below_.links.eventReports.lDispRptListEditor(true);
    } else if (gem::isCustomVariable(category)) {
        below_.links.listChildren.lUpdateVarChild(false);
        below_.checks.format.closeDependents();  // they open when a format is chosen
    } else if (category == gem::CSTRPT) {
        below_.links.reportVariables.clear();
        below_.links.reportVariables.lDispVarListEditor(true);
    }
    proposeId();
    focusFirst();
}

void EditCommands::proposeId() {
    const gem::Kind kind = gem::kindOf(window_.state.category);
    const gem::Control id = gem::fieldWith(kind, gem::Check::Id);
    if (id == gem::Control::None) return;
    std::string next;
    // Without a proposal the user types one.
    window_.errors.handle("cmdNew_Click", [&] {
        next = window_.operations.lGetNextID(std::string(gem::factsOf(id).column),
                                             std::string(gem::factsOf(kind).table));
    });
    window_.form[id].setText(form::toQt(next));
}

void EditCommands::backToBrowsing(const char* procedure) {
    form::MainState& state = window_.state;
    window_.errors.handle(procedure, [&] {
        if (!state.editing() || state.current.records == nullptr) return;
        if (state.current.records->editPending()) state.current.records->cancelUpdate();
        state.current.position = state.savedPosition;
    });
    state.editMode = EditMode::Browsing;
    below_.links.listChildren.endEditing();
    window_.errors.handle(procedure, [&] {
        below_.records.lUpdateNavigator();
        access_.lSetCtrlAccess(state.category, true);
    });
}

void EditCommands::cmdCancel_Click() {
    form::MainState& state = window_.state;
    if (!state.editing()) return;
    state.checksEnabled = false;
    below_.links.listChildren.endEditing();
    if (state.current.records != nullptr) {
        // A failure is shown, and the cancel goes on: it must never leave the window half in an
        // edit.
        if (!window_.errors.handle("cmdCancel_Click", [&] { returnToRecord(); }))
            window_.errors.handle("cmdCancel_Click", [&] { moveToFirst(state.current); });
    }
    window_.errors.handle("cmdCancel_Click", [&] { below_.records.lUpdateNavigator(); });
    below_.records.blankFields();
    below_.records.lDisplayField();
    window_.errors.handle("cmdCancel_Click", [&] { closeEdit(); });
    state.editMode = EditMode::Browsing;
    state.checksEnabled = true;
    window_.showButtons();  // the tools ask whether the edit has ended
    access_.focusBrowsing();
}

void EditCommands::closeEdit() {
    access_.lSetEditMode(window_.state.category, false);
    access_.lSetCtrlAccess(window_.state.category, true);
    showStoredLists();
    below_.checks.box.clear();
    access_.showCategory();
}

void EditCommands::returnToRecord() {
    form::MainState& state = window_.state;
    db::Recordset& records = *state.current.records;
    if (records.editPending()) records.cancelUpdate();
    if (records.recordCount() < 1) {
        access_.lClearInput(state.category);
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
    const std::int16_t category = window_.state.category;
    links::LinkEditors& links = below_.links;
    const bool shown = recordShown();
    if (!shown) links.clear();
    if (category == gem::CSTEVT) {
        if (shown) links.eventReports.lUpdateEvtRptList(false);
        links.eventReports.lDispRptListEditor(false);
    } else if (gem::isCustomVariable(category)) {
        // The one place where a lower-case format is not taken for a list.
        const QString format = window_.form[gem::Control::cmbVarFormat].text();
        links.listChildren.lUpdateVarChild(shown && format == QLatin1String("L"));
        links.listChildren.lDispChildEditor(false);
    } else if (category == gem::GEMSTT) {
        below_.settings.lInitSttInput(false);
    } else if (category == gem::CSTRPT) {
        if (shown) links.reportVariables.lUpdateRptVarList();
        links.reportVariables.lDispVarListEditor(false);
    }
}

}  // namespace stelvan::editing
