#include "editing/control_access.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "form/text.h"

namespace stelvan::editing {

using form::Colour;
using gem::Access;

void ControlAccess::lSetEditMode(std::int16_t category, bool editing) {
    base::trap("lSetEditMode", [&] { window_.showButtons(category, editing); });
}

void ControlAccess::lSetCtrlAccess(std::int16_t category, bool locked) {
    base::trap("lSetCtrlAccess", [&] {
        for (const gem::FieldFacts& facts : gem::fieldsOf(category))
            setInput(window_.form[facts.control], gem::accessIn(category, facts), locked);
        const gem::Control list = gem::factsOf(gem::kindOf(category)).list;
        if (list == gem::Control::None) return;
        const bool open = gem::isCustom(category) && !locked;
        form::ListView& selected = *window_.form.editorOf(list).selected;
        selected.setOpen(open);
        selected.setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
    });
}

void ControlAccess::setInput(form::Field& field, Access access, bool locked) {
    if (access == Access::CheckBox) {
        field.setEnabled(!locked);
        field.setColour(locked ? Colour::ButtonFace : Colour::ToolTipBackground);
        return;
    }
    const bool adding = window_.state.editMode == form::EditMode::Adding;
    const bool follows = access == Access::Follows || access == Access::FollowsWhole ||
                         (access == Access::ById && adding);
    const bool open = follows && !locked;
    const bool whole = access == Access::FollowsWhole || access == Access::ClosedWhole;
    field.setEnabled(open || !whole);
    field.setLocked(!open);
    if (access != Access::ClosedAsIs)
        field.setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
}

void ControlAccess::lInitCtrlForEdit() {
    base::trap("lInitCtrlForEdit", [&] {
        const std::int16_t category = window_.state.category;
        // The events of the standard have nothing that could be at fault.
        if (category == gem::GEMEVT) return;
        for (const gem::FieldFacts& facts : gem::fieldsOf(category))
            if (facts.check != gem::Check::None)
                window_.form[facts.control].setMarker(QStringLiteral("0"));
    });
}

void ControlAccess::lClearInput(std::int16_t category) {
    base::trap("lClearInput", [&] {
        if (!gem::isCustom(category)) return;
        for (const gem::FieldFacts& facts : gem::fieldsOf(category))
            window_.form[facts.control].setText(QString());
    });
}

void ControlAccess::showCategory() {
    window_.form.statusPanel->setText(form::toQt(gem::categoryAt(window_.state.category).caption));
}

void ControlAccess::focusBrowsing() {
    if (window_.form.nav.cmdUpdate->isEnabled()) {
        window_.form.nav.cmdUpdate->setFocus(Qt::OtherFocusReason);
    } else {
        window_.form.tvwSECSItem->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace stelvan::editing
