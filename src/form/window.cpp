#include "form/window.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTreeWidget>

#include "db/value_text.h"
#include "form/text.h"
#include "gem/buttons.h"
#include "gem/kinds.h"

namespace stelvan::form {
namespace {

/// What the record shown holds: its field says so, unless its display broke off before it.
std::string shownText(const Window& window, gem::Control control) {
    const MainState& state = window.state;
    if (!state.displayBroken || !state.current.onRecord())
        return toUtf8(window.form[control].text());
    try {
        const std::string column(gem::factsOf(control).column);
        return db::toTextOrEmpty(state.current.records->field(column));
    } catch (const base::RunTimeError&) {
        return {};  // the display has said so
    }
}

gem::Situation situationOf(const Window& window, std::int16_t category, bool editing) {
    const MainState& state = window.state;
    return {.category = category,
            .editing = editing,
            .loaded = state.current.records != nullptr,
            .count = state.current.count(),
            .position = state.current.position,
            .format = gem::isVariable(category) ? shownText(window, gem::Control::cmbVarFormat)
                                                : std::string(),
            .reportId = category == gem::CSTRPT ? shownText(window, gem::Control::txtRptID)
                                                : std::string()};
}

/// A move button that closes hands the focus to the other one.
void setMove(QPushButton& button, QPushButton& other, bool enabled) {
    const bool handsOver = !enabled && button.hasFocus();
    if (handsOver && other.isEnabled()) other.setFocus(Qt::OtherFocusReason);
    button.setEnabled(enabled);
}

}  // namespace

Window::Window(QMainWindow& shell, Dialogs& boxes, base::ErrorInfo::Show show)
    : errors(std::move(show)),
      dialogs(boxes),
      form(buildForm(shell)),
      operations(state.databasePath, state.current),
      focusWatch(shell, *form.nav.cmdSave, *form.nav.cmdCancel) {}

Window::Window(QMainWindow& shell, Dialogs& boxes)
    : Window(shell, boxes,
             [&boxes](const std::string& line) { boxes.message(toQt(line), Icon::Exclamation); }) {}

void Window::showButtons(std::int16_t category, bool editing) const {
    const gem::Buttons open = gem::buttonsIn(situationOf(*this, category, editing));
    const Navigator& nav = form.nav;
    form.mnuFileDB->setEnabled(open.browse);
    form.tvwSECSItem->setEnabled(open.browse);
    nav.cmdCancel->setVisible(open.inEdit);
    nav.cmdSave->setVisible(open.inEdit);
    form.lblNotSaved->setVisible(editing);
    nav.cmdNew->setEnabled(open.add);
    nav.cmdUpdate->setEnabled(open.edit);
    nav.cmdDelete->setEnabled(open.remove);
    showMoveButtons(open.previous, open.next);
    onButtons(editing);
}

void Window::showMoveButtons(bool previous, bool next) const {
    const Navigator& nav = form.nav;
    // The one that opens comes first, so that it can take the focus from the one that closes.
    if (previous) nav.cmdPrevious->setEnabled(true);
    setMove(*nav.cmdNext, *nav.cmdPrevious, next);
    setMove(*nav.cmdPrevious, *nav.cmdNext, previous);
}

}  // namespace stelvan::form
