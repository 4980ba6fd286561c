#include "form/focus_watch.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFocusEvent>
#include <QPushButton>
#include <QTimer>

namespace stelvan::form {
namespace {

bool isUsersDoing(Qt::FocusReason reason) {
    return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
           reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

}  // namespace

FocusWatch::FocusWatch(QWidget& window, QPushButton& cmdSave, QPushButton& cmdCancel)
    : QObject(&window), window_(window), cmdSave_(cmdSave), cmdCancel_(cmdCancel) {
    const auto fields = window.findChildren<Field*>();
    for (const Field* field : fields) field->widget()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &FocusWatch::focusChanged);
}

void FocusWatch::moveFocus(QWidget& target, bool backwards) {
    target.setFocus(backwards ? Qt::BacktabFocusReason : Qt::TabFocusReason);
}

bool FocusWatch::counts(const QWidget& from, const QWidget* to, Qt::FocusReason reason) const {
    // A widget that is being disabled or hidden hands the focus on as if Tab had been pressed.
    if (!isUsersDoing(reason) || !from.isEnabled() || !from.isVisible()) return false;
    if (to == nullptr || to->window() != &window_ || to == &cmdCancel_) return false;
    return to != &cmdSave_ || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

bool FocusWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        auto* widget = static_cast<QWidget*>(watched);
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        byMouse_ = reason == Qt::MouseFocusReason;
        leaving_ = counts(*widget, QApplication::focusWidget(), reason)
                       ? widget->findChild<Field*>(QString(), Qt::FindDirectChildrenOnly)
                       : nullptr;
    }
    return QObject::eventFilter(watched, event);
}

void FocusWatch::focusChanged(QWidget* from, QWidget* to) {
    // The check runs once the other control has the focus, so that a box it shows finds the window
    // settled.
    Field* left = leaving_;
    leaving_ = nullptr;
    if (left == nullptr || left->widget() != from || to == nullptr) return;
    left->leave();
    // A box shown by the check has taken the mouse button's release away from the clicked button.
    auto* button = qobject_cast<QAbstractButton*>(to);
    if (!byMouse_ || button == nullptr || QGuiApplication::mouseButtons() != Qt::NoButton) return;
    QTimer::singleShot(0, button, [button] {
        if (button->isDown()) button->click();
    });
}

}  // namespace stelvan::form
