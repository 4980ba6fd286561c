#include "app/subsystems.h"

namespace stelvan::app {

Subsystems::Subsystems(const Ground& on)
    : operations(on.errors, on.state.databasePath, on.adoGEM, on.state.current),
      exceptionBox(*on.form.txtErrLog, on.dialogs, on.errors, catalogue),
      recordChecks(on.form, on.errors, exceptionBox),
      variableFormat(on.form.var, on.state, recordChecks),
      valueChecks(on.form.var, on.errors, variableFormat),
      fieldChecks(on.form, on.state, operations, recordChecks, variableFormat, valueChecks),
      selectionLists(on.form, on.state, on.errors, on.dialogs, recordChecks),
      eventReports(on.form.evt, operations),
      reportVariables(on.form.rpt, on.form.nav, operations),
      listChildren(on.form.var, on.state, operations, on.dialogs),
      settingInputs(on.form.stt, on.state, on.errors, exceptionBox, on.dialogs),
      recordView(on.form, on.state, on.errors, {eventReports, reportVariables, listChildren},
                 settingInputs),
      gridView(on.form, on.state, on.errors, on.adoGEM),
      categoryTree(on.form, on.state, categories, operations, recordView, gridView, variableFormat),
      access(on.form, on.state, on.errors, reportVariables),
      editContext{on.form,      on.state,       on.errors,   operations,   on.dialogs,
                  exceptionBox, variableFormat, fieldChecks, eventReports, reportVariables,
                  listChildren, settingInputs,  recordView,  access},
      editCommands(editContext),
      saveRecord(editContext),
      focusChain(on.form, on.errors),
      focusWatch(on.window, *on.form.nav.cmdSave, *on.form.nav.cmdCancel) {}

}  // namespace stelvan::app
