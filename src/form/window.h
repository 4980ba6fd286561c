// What the form offers to the floors above: controls, state, boxes, and the database behind them.
//
// Made once for a main window, used by the program and by tests alike. Each floor above makes one
// such struct from that of the floor below it.
#pragma once

#include <functional>

#include "base/error_info.h"
#include "db/operations.h"
#include "form/dialogs.h"
#include "form/focus_watch.h"
#include "form/frames.h"
#include "form/main_state.h"

namespace stelvan::form {

struct Window {
    /// Builds all controls into `shell`. Both must outlive the object. `show` shows the line of a
    /// failure.
    Window(QMainWindow& shell, Dialogs& dialogs, base::ErrorInfo::Show show);
    /// Failures are shown in a box.
    Window(QMainWindow& shell, Dialogs& dialogs);

    base::ErrorInfo errors;  // first, so that failures of all others can be reported
    Dialogs& dialogs;
    MainState state;
    MainForm form;
    db::Operations operations;
    FocusWatch focusWatch;

    /// Runs at the end of showButtons(), for the aids that follow what is shown and done.
    std::function<void(bool editing)> onButtons = [](bool) {};

    /// Sets every button of the navigator, the tree and the database entry of the menu by what is
    /// shown and done now.
    void showButtons(std::int16_t category, bool editing) const;
    /// "&Previous" and "&Next" alone.
    void showMoveButtons(bool previous, bool next) const;
    void showButtons() const { showButtons(state.category, state.editing()); }

    /// Whether a field that is left is judged.
    [[nodiscard]] bool judging() const { return state.editing() && state.checksEnabled; }
};

}  // namespace stelvan::form
