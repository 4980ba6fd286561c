#include "browser/area_walk.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTreeWidget>

#include "form/focus_watch.h"

namespace stelvan::browser {
namespace {

bool takesFocus(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0;
}

}  // namespace

QWidget* AreaWalk::area(std::size_t index) const {
    const form::MainForm& form = window_.form;
    switch (index) {
        case 0:
            return form.tvwSECSItem->parentWidget();
        case 1:
            return form.Frame.at(static_cast<std::size_t>(form.frontFrame()));
        case 2:
            return form.nav.fraDBOperation;
        case 3:
            return form.txtErrLog;
        default:
            return form.aids.findings;
    }
}

QWidget* AreaWalk::targetIn(std::size_t index) const {
    QWidget* const whole = area(index);
    if (whole == nullptr || !whole->isVisible()) return nullptr;
    QWidget* const last = last_.at(index);
    if (last != nullptr && takesFocus(*last) && (last == whole || whole->isAncestorOf(last)))
        return last;
    // The tree, or what was found, before the box above them.
    if (index == 0 && takesFocus(*window_.form.tvwSECSItem)) return window_.form.tvwSECSItem;
    if (takesFocus(*whole)) return whole;
    // In the order of Tab, which goes round.
    for (QWidget* next = whole->nextInFocusChain(); next != whole; next = next->nextInFocusChain())
        if (whole->isAncestorOf(next) && takesFocus(*next)) return next;
    return nullptr;
}

void AreaWalk::walk(bool backwards) {
    QWidget* const focus = QApplication::focusWidget();
    std::size_t here = backwards ? 0 : kAreas - 1;
    for (std::size_t index = 0; index < kAreas; ++index) {
        QWidget* const whole = area(index);
        if (whole == nullptr || focus == nullptr) continue;
        if (focus == whole || whole->isAncestorOf(focus)) here = index;
    }
    if (focus != nullptr) last_.at(here) = focus;
    for (std::size_t step = 1; step < kAreas; ++step) {
        const std::size_t next = (here + (backwards ? kAreas - step : step)) % kAreas;
        QWidget* const target = targetIn(next);
        if (target == nullptr) continue;
        form::FocusWatch::moveFocus(*target, backwards);
        return;
    }
}

}  // namespace stelvan::browser
