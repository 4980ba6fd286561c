#include "browser/record_view.h"
#include "editing/control_access.h"
#include "editing/edit_commands.h"
#include "editing/record_position.h"
#include "form/text.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"

namespace stelvan::editing {
namespace {

constexpr auto kPrompt = "Delete current record ?";
constexpr auto kPromptTitle = "Delete confirmation";
constexpr auto kReserved = "ReportID of 0 to 100 is reserved for GEM and cannot be deleted.";

}  // namespace

void EditCommands::cmdDelete_Click() {
    at_.errors.trap("cmdDelete_Click", [&] {
        if (!recordShown() ||
            !at_.dialogs.confirm(QLatin1String(kPrompt), QLatin1String(kPromptTitle)) ||
            !completeDisplay())
            return;
        if (at_.state.category == form::CSTRPT &&
            links::isReservedReport(form::toUtf8(at_.form.rpt.txtRptID->text()))) {
            at_.dialogs.message(QLatin1String(kReserved), form::Icon::Exclamation);
            return;
        }
        deleteShown();
    });
    if (at_.state.recordIsStale) showPresentState();
}

void EditCommands::deleteShown() {
    db::CurrentRecords& current = at_.state.current;
    {
        db::UnitOfWork unit(at_.operations.path());
        if (!deleteLinked()) return;
        noteStale(at_.state, [&] { current.records->deleteCurrent(); });
        unit.commit();
    }
    showFollower();
}

bool EditCommands::deleteLinked() {
    const base::FailureWatch watch(at_.errors);
    db::Connection connection;
    const auto run = [&](const std::string& statement) {
        if (!watch.failed()) at_.operations.lExecCommand(connection, statement);
    };
    const std::string variable = form::toUtf8(at_.form.var.txtVarID->text());
    const std::string event = form::toUtf8(at_.form.evt.txtEvtID->text());
    const std::string report = form::toUtf8(at_.form.rpt.txtRptID->text());
    switch (at_.state.category) {
        case form::CSTEVT:
            run("Delete FROM secs_def_evt_rpt WHERE evt_id = " + event);
            break;
        case form::CSTVDV:
        case form::CSTVSV:
            // The children of a list are released, not deleted.
            if (at_.recordView.format().trimmed() == QLatin1String("L"))
                run("UPDATE secs_cusvar  SET var_parentkey = 0  WHERE var_parentkey = " + variable);
            break;
        case form::CSTRPT:
            run("Delete FROM secs_def_evt_rpt WHERE rpt_id = " + report);
            run("Delete FROM secs_rpt_var WHERE rpt_id = " + report);
            break;
        default:
            break;
    }
    return !watch.failed();
}

void EditCommands::showFollower() {
    db::CurrentRecords& current = at_.state.current;
    resynchronise(current);
    // The follower takes the deleted record's place and number; past the last one comes the first.
    if (!current.records->eof()) {
        current.records->moveNext();
        current.position = current.records->position() - 1;
        current.records->movePrevious();
    }
    at_.recordView.cmdNext_Click();
    at_.access.lSetEditMode(at_.state.category, false);
}

void EditCommands::showPresentState() {
    at_.errors.trap("cmdDelete_Click", [&] {
        at_.state.recordIsStale = false;
        resynchronise(at_.state.current);
        if (!recordShown()) moveToFirst(at_.state.current);
    });
    at_.recordView.lUpdateNavigator();
    at_.recordView.lDisplayField();
    at_.recordView.refreshLists();
    at_.access.lSetEditMode(at_.state.category, false);
}

}  // namespace stelvan::editing
