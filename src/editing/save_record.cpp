#include "editing/save_record.h"

#include "browser/record_view.h"
#include "checks/exception_box.h"
#include "checks/field_checks.h"
#include "editing/column_values.h"
#include "editing/control_access.h"
#include "editing/record_position.h"
#include "form/text.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "settings/setting_inputs.h"

namespace stelvan::editing {
namespace {

using form::EditMode;

constexpr auto kRefused = "Record cannot be saved. Please correct the exception.";
constexpr auto kListFormat = "L";

std::string idIn(const form::Field& field) {
    return form::toUtf8(field.text().trimmed());
}

}  // namespace

void SaveRecord::cmdSave_Click() {
    if (!at_.state.editing()) return;
    bool stored = false;
    at_.errors.trap("cmdSave_Click", [&] {
        if (!verified()) {
            at_.exceptionBox.lReportError(QLatin1String(kRefused));
        } else {
            stored = at_.state.current.records == nullptr || store();
        }
    });
    if (stored) showStored();
}

bool SaveRecord::verified() {
    switch (at_.state.category) {
        case form::GEMEVT:
            return true;
        case form::GEMSTT:
            return at_.settingInputs.checkForSave();
        default:
            return at_.fieldChecks.checkForSave(at_.state.category);
    }
}

bool SaveRecord::store() {
    requireFilledList();
    db::Recordset& record = *at_.state.current.records;
    db::UnitOfWork unit(at_.operations.path());
    writeColumns(record);
    if (!writeLinks()) return false;
    noteStale(at_.state, [&] { record.update(); });
    unit.commit();
    return true;
}

void SaveRecord::requireFilledList() const {
    const std::int16_t category = at_.state.category;
    const bool filled =
        category == form::CSTEVT   ? at_.eventReports.filled()
        : category == form::CSTRPT ? at_.reportVariables.filled()
        : form::isCustomVariable(category) && formatOf(at_.form.var) == QLatin1String(kListFormat)
            ? at_.listChildren.filled()
            : true;
    // Saving what is missing from the list would delete it from the file.
    if (!filled)
        throw base::RunTimeError(
            base::objectNotSet().number(),
            "The list on the record could not be read from the database, so the record "
            "cannot be saved. Cancel, and show the record again.");
}

void SaveRecord::writeColumns(db::Recordset& record) {
    const std::int16_t category = at_.state.category;
    for (const ColumnValue& column : columnValues(at_.form, category))
        record.setField(column.column, column.value);
    if (category == form::GEMSTT) {
        const form::SttFrame& stt = at_.form.stt;
        record.setField("set_value", form::toUtf8(at_.settingInputs.storedValue(*stt.txtSttValue)));
        record.setField("set_defaultval",
                        form::toUtf8(at_.settingInputs.storedValue(*stt.txtSttDefValue)));
    }
    if (form::isCustomVariable(category) && at_.state.editMode == EditMode::Adding)
        // With a Null parent the variable would be offered in no pool.
        for (const char* column : {"var_parentkey", "var_accessid", "var_allowduplicates"})
            record.setField(column, 0);
}

bool SaveRecord::writeLinks() {
    switch (at_.state.category) {
        case form::CSTEVT:
            return at_.eventReports.saveLinks(idIn(*at_.form.evt.txtEvtID));
        case form::CSTRPT:
            return at_.reportVariables.saveLinks(idIn(*at_.form.rpt.txtRptID));
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            return writeChildren();
        default:
            return true;
    }
}

bool SaveRecord::writeChildren() {
    const std::string id = idIn(*at_.form.var.txtVarID);
    if (formatOf(at_.form.var) == QLatin1String(kListFormat)) return at_.listChildren.saveLinks(id);
    // As children of no list they would be found nowhere again.
    return !wasList() || at_.listChildren.releaseChildren(id);
}

bool SaveRecord::wasList() const {
    if (at_.state.editMode == EditMode::Adding) return false;
    const db::Recordset& records = *at_.state.current.records;
    for (std::size_t i = 0; i < records.fieldCount(); ++i)
        if (records.fieldName(i) == "var_format")
            return form::toQt(
                       db::toTextOrEmpty(records.storedField(at_.state.current.position - 1, i)))
                       .trimmed()
                       .toUpper() == QLatin1String(kListFormat);
    return false;
}

void SaveRecord::showStored() {
    form::MainState& state = at_.state;
    state.checksEnabled = false;
    at_.exceptionBox.clear();
    if (state.current.records != nullptr)
        at_.errors.trap("cmdSave_Click", [&] { resynchronise(state.current); });
    state.editMode = EditMode::Browsing;
    state.recordIsStale = false;
    at_.listChildren.endEditing();
    at_.recordView.lDisplayField();
    at_.recordView.refreshLists();
    at_.eventReports.lDispRptListEditor(false);
    at_.reportVariables.lDispVarListEditor(false);
    at_.listChildren.lDispChildEditor(false);
    at_.access.lSetEditMode(state.category, false);
    at_.access.lSetCtrlAccess(state.category, true);
    at_.recordView.lUpdateNavigator();
    state.checksEnabled = true;
    at_.access.focusBrowsing();
}

}  // namespace stelvan::editing
