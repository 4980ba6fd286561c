#include "editing/save_record.h"

#include "base/text.h"
#include "editing/record_position.h"
#include "gem/formats.h"
#include "gem/schema.h"
#include "gem/stored.h"

namespace stelvan::editing {
namespace {

using form::EditMode;

constexpr auto kRefused = "Record cannot be saved. Please correct the exception.";

void setColumns(db::Recordset& record, const std::vector<gem::ColumnValue>& columns) {
    for (const auto& [column, value] : columns)
        std::visit([&](const auto& stored) { record.setField(std::string(column), stored); },
                   value);
}

}  // namespace

void SaveRecord::cmdSave_Click() {
    if (!window_.state.editing()) return;
    bool stored = false;
    window_.errors.handle("cmdSave_Click", [&] {
        if (!verified()) {
            below_.checks.box.lReportError(QLatin1String(kRefused));
            return;
        }
        stored = window_.state.current.records == nullptr || store();
    });
    if (stored) showStored();
}

bool SaveRecord::verified() {
    switch (window_.state.category) {
        case gem::GEMEVT:
            return true;
        case gem::GEMSTT:
            return below_.settings.checkForSave();
        default:
            return below_.checks.fields.checkForSave(window_.state.category);
    }
}

bool SaveRecord::store() {
    requireFilledList();
    if (!copy_.mayWrite()) return false;
    write(below_.checks.recordFields.read());
    return true;
}

void SaveRecord::write(const gem::Record& record) {
    db::Recordset& stored = *window_.state.current.records;
    const bool wasList =
        record.kind() == gem::Kind::Variable &&
        gem::isList(below_.checks.recordFields.stored(gem::schema::variable::kFormat));
    db::UnitOfWork unit(window_.operations.path(), db::UnitOfWork::Notes::RowChanges);
    setColumns(stored, gem::columnsOf(record));
    if (record.adding) setColumns(stored, gem::columnsOfNew(record.kind()));
    noteStale(window_.state, [&] {
        writeLinks(record, wasList);
        stored.update();
    });
    unit.commit();
    if (const auto address = below_.jump.shown()) undo_.noteDone("Save", *address, unit.changes());
}

void SaveRecord::requireFilledList() const {
    const std::int16_t category = window_.state.category;
    const std::string format = below_.checks.recordFields.read().format();
    const links::LinkEditors& links = below_.links;
    const bool filled = category == gem::CSTEVT   ? links.eventReports.filled()
                        : category == gem::CSTRPT ? links.reportVariables.filled()
                        : gem::isCustomVariable(category) && gem::isList(format)
                            ? links.listChildren.filled()
                            : true;
    // Saving what is missing from the list would delete it from the file.
    if (!filled)
        throw base::RunTimeError(
            base::objectNotSet().number(),
            "The list on the record could not be read from the database, so the record "
            "cannot be saved. Cancel, and show the record again.");
}

void SaveRecord::writeLinks(const gem::Record& record, bool wasList) {
    if (!gem::isCustom(record.category())) return;
    const gem::Control idField = gem::fieldWith(record.kind(), gem::Check::Id);
    const std::string id(base::trimBlanks(record[idField].text));
    switch (record.kind()) {
        case gem::Kind::CollectionEvent:
            below_.links.eventReports.saveLinks(id);
            break;
        case gem::Kind::Report:
            below_.links.reportVariables.saveLinks(id);
            break;
        case gem::Kind::Variable:
            if (gem::isList(record.format())) {
                below_.links.listChildren.saveLinks(id);
            } else if (wasList) {
                // As children of no list they would be found nowhere again.
                below_.links.listChildren.releaseChildren(id);
            }
            break;
        default:
            break;
    }
}

void SaveRecord::showStored() {
    form::MainState& state = window_.state;
    state.checksEnabled = false;
    below_.checks.box.clear();
    if (state.current.records != nullptr)
        window_.errors.handle("cmdSave_Click", [&] { resynchronise(state.current); });
    state.editMode = EditMode::Browsing;
    state.recordIsStale = false;
    below_.links.listChildren.endEditing();
    below_.records.lDisplayField();
    below_.records.refreshLists();
    below_.links.eventReports.lDispRptListEditor(false);
    below_.links.reportVariables.lDispVarListEditor(false);
    below_.links.listChildren.lDispChildEditor(false);
    window_.errors.handle("cmdSave_Click", [&] {
        access_.lSetEditMode(state.category, false);
        access_.lSetCtrlAccess(state.category, true);
        below_.records.lUpdateNavigator();
        access_.showCategory();
    });
    state.checksEnabled = true;
    access_.focusBrowsing();
}

}  // namespace stelvan::editing
