#include "base/text.h"
#include "editing/edit_commands.h"
#include "editing/record_position.h"
#include "form/text.h"
#include "gem/ids_and_names.h"
#include "gem/queries.h"

namespace stelvan::editing {
namespace {

constexpr auto kPrompt = "Delete current record ?";
constexpr auto kPromptTitle = "Delete confirmation";
constexpr auto kReserved = "ReportID of 0 to 100 is reserved for GEM and cannot be deleted.";

}  // namespace

void EditCommands::cmdDelete_Click() {
    window_.errors.handle("cmdDelete_Click", [&] {
        if (!recordShown() ||
            !window_.dialogs.confirm(QLatin1String(kPrompt), QLatin1String(kPromptTitle)))
            return;
        completeDisplay();
        const std::string report = form::toUtf8(window_.form[gem::Control::txtRptID].text());
        if (window_.state.category == gem::CSTRPT && gem::isReservedReport(report)) {
            window_.dialogs.message(QLatin1String(kReserved), form::Icon::Exclamation);
            return;
        }
        if (copy_.mayWrite()) deleteShown();
    });
    if (window_.state.recordIsStale) showPresentState();
}

void EditCommands::deleteShown() {
    const std::int16_t category = window_.state.category;
    const gem::Control id = gem::fieldWith(gem::kindOf(category), gem::Check::Id);
    const auto address = below_.jump.shown();
    {
        db::UnitOfWork unit(window_.operations.path(), db::UnitOfWork::Notes::RowChanges);
        db::Connection connection;
        for (const std::string& statement :
             gem::cascadesOf(category, form::toUtf8(window_.form[id].text()),
                             form::toUtf8(window_.form[gem::Control::cmbVarFormat].text())))
            window_.operations.lExecCommand(connection, statement);
        noteStale(window_.state, [&] { window_.state.current.records->deleteCurrent(); });
        unit.commit();
        if (address) undo_.noteDone("Delete", *address, unit.changes());
    }
    showFollower();
}

void EditCommands::showFollower() {
    db::CurrentRecords& current = window_.state.current;
    resynchronise(current);
    // The follower takes the deleted record's place and number; past the last one comes the first.
    if (!current.records->eof()) {
        current.records->moveNext();
        current.position = current.records->position() - 1;
        current.records->movePrevious();
    }
    below_.records.cmdNext_Click();
}

void EditCommands::showPresentState() {
    window_.errors.handle("cmdDelete_Click", [&] {
        window_.state.recordIsStale = false;
        resynchronise(window_.state.current);
        if (!recordShown()) moveToFirst(window_.state.current);
    });
    window_.errors.handle("cmdDelete_Click", [&] { below_.records.lUpdateNavigator(); });
    below_.records.lDisplayField();
    below_.records.refreshLists();
    window_.showButtons();
}

}  // namespace stelvan::editing
