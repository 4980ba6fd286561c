#include "editing/focus_chain.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTreeWidget>

#include "form/focus_watch.h"

namespace stelvan::editing {
namespace {

// The order is irregular in places, and meant so: a frame's first field names itself or its
// follower as the one before it, and the report pool leads on to cmdSave while its buttons lead on
// into the list.
constexpr FocusStep kSteps[] = {
    {"txtVarName", "txtVarName", "txtVarID"},
    {"txtVarID", "txtVarName", "txtVarGroup"},
    {"txtVarGroup", "txtVarID", "txtVarDesc"},
    {"txtVarDesc", "txtVarGroup", "cmbVarFormat", "txtVarMin"},
    {"cmbVarFormat", "txtVarDesc", "txtVarMin"},
    {"txtVarMin", "cmbVarFormat", "txtVarMax", "txtVarDesc"},
    {"txtVarMax", "txtVarMin", "txtVarUnit"},
    {"txtVarUnit", "txtVarMax", "txtVarDefValue"},
    {"txtVarDefValue", "txtVarUnit", "txtVarValue"},
    {"txtVarValue", "txtVarDefValue", "lvwItemSelection"},
    {"lvwItemSelection", "txtVarDefValue", "cmdSelect"},
    {"cmdSelect", "lvwItemSelection", "cmdDeselect"},
    {"cmdDeselect", "cmdSelect", "cmdOrderUp"},
    {"cmdOrderUp", "cmdDeselect", "cmdOrderDown"},
    {"cmdOrderDown", "cmdOrderUp", "lvwItemSelection"},
    {"lvwChildItems", "cmdOrderDown", "cmdSave", {}, "cmdOrderDown_KeyDown"},

    {"txtAlmName", "txtAlmID", "txtAlmID"},
    {"txtAlmID", "txtAlmName", "txtAlmGroup"},
    {"txtAlmGroup", "txtAlmID", "txtAlmText"},
    {"txtAlmText", "txtAlmGroup", "chkAlmEnable"},
    {"chkAlmEnable", "txtAlmText", "txtAlmSetCEName"},
    {"txtAlmSetCEName", "chkAlmEnable", "txtAlmSetCEID"},
    {"txtAlmSetCEID", "txtAlmSetCEName", "txtAlmClrCEName"},
    {"txtAlmClrCEName", "txtAlmSetCEID", "txtAlmClrCEID"},
    {"txtAlmClrCEID", "txtAlmClrCEName", "cmdSave"},

    {"txtEvtName", "txtEvtID", "txtEvtID"},
    {"txtEvtID", "txtEvtName", "txtEvtGroup"},
    {"txtEvtGroup", "txtEvtID", "txtEvtDesc"},
    {"txtEvtDesc", "txtEvtGroup", "chkEvtEnable"},
    {"chkEvtEnable", "txtEvtDesc", "lvwRptPool"},
    {"cmdRptSelect", "lvwRptPool", "cmdRptDeselect"},
    {"cmdRptDeselect", "cmdRptSelect", "cmdRptOrderUp"},
    {"cmdRptOrderUp", "cmdRptDeselect", "cmdRptOrderDown"},
    {"cmdRptOrderDown", "cmdRptOrderUp", "lvwRptList"},
    {"lvwRptPool", "cmdRptOrderDown", "cmdSave"},

    {"txtRptName", "txtRptName", "txtRptID"},
    {"txtRptID", "txtRptName", "txtRptDesc"},
    {"txtRptDesc", "txtRptID", "chkRptDefault"},
    {"chkRptDefault", "txtRptDesc", "lvwVarPool"},
    {"lvwVarPool", "chkRptDefault", "cmdVarSelect"},
    {"cmdVarSelect", "lvwVarPool", "cmdVarDeselect"},
    {"cmdVarDeselect", "cmdVarSelect", "cmdVarOrderUp"},
    {"cmdVarOrderUp", "cmdVarDeselect", "cmdVarOrderDown"},
    {"cmdVarOrderDown", "cmdVarOrderUp", "lvwVarList"},
    {"lvwVarList", "cmdVarOrderDown", "cmdSave"},

    {"txtSttValue", "txtSttValue", "txtSttDefValue"},
    {"txtSttDefValue", "txtSttValue", "cmdSave"},
    {"cmbSttValue", "cmbSttValue", "cmbSttDefValue"},
    {"cmbSttDefValue", "cmbSttValue", "cmdSave"},
};

QString toQt(std::string_view name) {
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

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

std::span<const FocusStep> focusTable() {
    return kSteps;
}

FocusChain::FocusChain(const form::MainForm& form, base::ErrorInfo& errors)
    : form_(form), errors_(errors) {}

void FocusChain::install() {
    const QWidget* window = form_.tvwSECSItem->window();
    const auto control = [window](std::string_view name) {
        return name.empty() ? nullptr : window->findChild<QWidget*>(toQt(name));
    };
    for (const FocusStep& step : kSteps) {
        QWidget* const own = control(step.control);
        neighbours_.insert(own, {&step, control(step.previous), control(step.next),
                                 control(step.insteadOfFormat)});
        own->installEventFilter(this);
    }
}

bool FocusChain::eventFilter(QObject* watched, QEvent* event) {
    const auto around = neighbours_.constFind(watched);
    if (event->type() != QEvent::KeyPress || around == neighbours_.cend())
        return QObject::eventFilter(watched, event);
    const auto& pressed = static_cast<const QKeyEvent&>(*event);
    const int key = chainKey(pressed);
    if (key == 0 || keepsKey(watched, pressed, key)) return QObject::eventFilter(watched, event);
    keyDown(*around, key, shiftState(pressed));
    return true;
}

void FocusChain::keyDown(const Neighbours& around, int key, int shift) {
    const FocusStep& step = *around.step;
    const std::string procedure = step.reportedAs.empty() ? std::string(step.control) + "_KeyDown"
                                                          : std::string(step.reportedAs);
    errors_.trap(procedure, [&] {
        lSetFocus(key, shift, reachable(around.previous, around), reachable(around.next, around));
    });
}

QWidget* FocusChain::reachable(QWidget* neighbour, const Neighbours& around) const {
    const bool closedFormat = around.insteadOfFormat != nullptr &&
                              neighbour == form_.var.cmbVarFormat->widget() &&
                              !neighbour->isEnabled();
    return closedFormat ? around.insteadOfFormat : neighbour;
}

void FocusChain::lSetFocus(int key, int shift, QWidget* previous, QWidget* next) {
    errors_.trap("lSetFocus", [&] {
        if (key != kTab && key != kEnter) return;
        const bool backwards = (shift & kShift) != 0;
        if (!backwards && shift != 0) return;
        QWidget* const target = backwards ? previous : next;
        if (target != nullptr && target->isEnabled() && target->isVisible())
            form::FocusWatch::moveFocus(*target, backwards);
    });
}

}  // namespace stelvan::editing
