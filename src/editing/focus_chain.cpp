#include "editing/focus_chain.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPlainTextEdit>

#include "form/focus_watch.h"
#include "form/text.h"

namespace stelvan::editing {
namespace {

/// 0 for a key that the chain leaves alone.
int chainKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return FocusChain::kTab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return FocusChain::kEnter;
        default:
            return 0;
    }
}

int shiftState(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    return (held.testFlag(Qt::ShiftModifier) || event.key() == Qt::Key_Backtab ? FocusChain::kShift
                                                                               : 0) |
           (held.testFlag(Qt::ControlModifier) ? FocusChain::kControl : 0) |
           (held.testFlag(Qt::AltModifier) ? FocusChain::kAlt : 0);
}

/// An open drop-down has its keys to itself, and Ctrl+Enter types a line break in a box of several
/// lines.
bool keepsKey(QObject* control, const QKeyEvent& event, int key) {
    const auto* combo = qobject_cast<QComboBox*>(control);
    if (combo != nullptr && combo->view()->isVisible()) return true;
    return key == FocusChain::kEnter && event.modifiers().testFlag(Qt::ControlModifier) &&
           qobject_cast<QPlainTextEdit*>(control) != nullptr;
}

}  // namespace

FocusChain::FocusChain(QWidget& shell, form::Window& window) : shell_(shell), window_(window) {}

QWidget* FocusChain::widgetOf(gem::Control control) const {
    return control == gem::Control::None
               ? nullptr
               : shell_.findChild<QWidget*>(form::toQt(gem::nameOf(control)));
}

void FocusChain::install() {
    for (const gem::FocusStep& step : gem::focusOrder()) {
        QWidget* const own = widgetOf(step.control);
        steps_.insert(own, &step);
        own->installEventFilter(this);
    }
}

bool FocusChain::eventFilter(QObject* watched, QEvent* event) {
    const gem::FocusStep* const step = steps_.value(watched);
    if (event->type() != QEvent::KeyPress || step == nullptr)
        return QObject::eventFilter(watched, event);
    const auto& pressed = static_cast<const QKeyEvent&>(*event);
    const int key = chainKey(pressed);
    if (key == 0 || keepsKey(watched, pressed, key)) return QObject::eventFilter(watched, event);
    // Where the way ends Tab is the toolkit's, so that no field holds the keyboard; Enter stays.
    const bool moved = keyDown(*step, key, shiftState(pressed));
    return moved || key == kEnter || QObject::eventFilter(watched, event);
}

bool FocusChain::keyDown(const gem::FocusStep& from, int key, int shift) {
    const std::string procedure = from.reportedAs.empty()
                                      ? std::string(gem::nameOf(from.control)) + "_KeyDown"
                                      : std::string(from.reportedAs);
    bool moved = false;
    window_.errors.handle(procedure, [&] {
        const bool formatEnabled = window_.form[gem::Control::cmbVarFormat].isEnabled();
        moved = lSetFocus(key, shift, widgetOf(gem::neighbourOf(from.control, true, formatEnabled)),
                          widgetOf(gem::neighbourOf(from.control, false, formatEnabled)));
    });
    return moved;
}

bool FocusChain::lSetFocus(int key, int shift, QWidget* previous, QWidget* next) {
    return base::trap("lSetFocus", [&] {
        if (key != kTab && key != kEnter) return false;
        const bool backwards = (shift & kShift) != 0;
        if (!backwards && shift != 0) return false;
        QWidget* const target = backwards ? previous : next;
        if (target == nullptr || !target->isEnabled() || !target->isVisible()) return false;
        form::FocusWatch::moveFocus(*target, backwards);
        return true;
    });
}

}  // namespace stelvan::editing
