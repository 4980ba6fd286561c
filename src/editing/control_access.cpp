#include "editing/control_access.h"

#include <QAction>
#include <QPushButton>
#include <QTreeWidget>

#include "links/navigator_buttons.h"

namespace stelvan::editing {
namespace {

using form::Colour;
using links::setNavigatorButtons;

QString toQt(std::string_view name) {
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

ControlAccess::ControlAccess(const form::MainForm& form, form::MainState& state,
                             base::ErrorInfo& errors, links::ReportVariables& reportVariables)
    : form_(form), state_(state), errors_(errors), reportVariables_(reportVariables) {
    const auto fields = form.fields();
    for (form::Field* field : fields) fields_.insert(field->widget()->objectName(), field);
}

void ControlAccess::lSetEditMode(std::int16_t category, bool editing) {
    errors_.trap("lSetEditMode", [&] {
        form_.mnuFileDB->setEnabled(!editing);
        form_.tvwSECSItem->setEnabled(!editing);
        if (editing) {
            form_.nav.cmdPrevious->setEnabled(false);
            form_.nav.cmdNext->setEnabled(false);
        }
        if (category == form::CSTRPT) {
            reportVariables_.lRptSetRightByRecord(editing);
        } else if (editing) {
            const bool editable = category >= form::GEMEVT && category <= form::GEMSTT;
            setNavigatorButtons(form_.nav, {.inEdit = editable});
        } else {
            browse(category);
        }
    });
}

void ControlAccess::browse(std::int16_t category) {
    switch (category) {
        case form::GEMEVT:
        case form::GEMVDV:
        case form::GEMSDV:
        case form::GEMVEC:
        case form::GEMSTT:
            setNavigatorButtons(form_.nav, {.canEdit = canEditGem(category)});
            break;
        case form::CSTALM:
        case form::CSTEVT:
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            setNavigatorButtons(
                form_.nav, {.canAdd = true, .canEdit = hasRecords(), .canDelete = hasRecords()});
            break;
        default:
            setNavigatorButtons(form_.nav, {});
            break;
    }
}

bool ControlAccess::hasRecords() const {
    return state_.current.records != nullptr && state_.current.records->recordCount() > 0;
}

bool ControlAccess::canEditGem(std::int16_t category) const {
    const bool isList = form::isGemVariable(category) &&
                        form_.var.cmbVarFormat->text().trimmed().toUpper() == QLatin1String("L");
    const bool isEmpty = state_.current.records != nullptr && !hasRecords();
    return !isList && !isEmpty;
}

void ControlAccess::lSetCtrlAccess(std::int16_t category, bool locked) {
    errors_.trap("lSetCtrlAccess", [&] {
        const CategoryRules& rules = rulesOf(category);
        for (const InputAccess& input : rules.inputs)
            setInput(field(input.field), input.access, locked);
        if (rules.list.empty()) return;
        const bool open = rules.listFollows && !locked;
        list(rules.list).setOpen(open);
        list(rules.list).setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
    });
}

void ControlAccess::setInput(form::Field& field, Access access, bool locked) {
    if (access == Access::CheckBox) {
        field.setEnabled(!locked);
        field.setColour(locked ? Colour::ButtonFace : Colour::ToolTipBackground);
        return;
    }
    const bool follows = access == Access::Follows || access == Access::FollowsWhole ||
                         (access == Access::ById && state_.editMode == form::EditMode::Adding);
    const bool open = follows && !locked;
    const bool whole = access == Access::FollowsWhole || access == Access::ClosedWhole;
    field.setEnabled(open || !whole);
    field.setLocked(!open);
    if (access != Access::ClosedAsIs)
        field.setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
}

void ControlAccess::lInitCtrlForEdit() {
    errors_.trap("lInitCtrlForEdit", [&] {
        for (const std::string_view name : rulesOf(state_.category).marked)
            field(name).setMarker(QStringLiteral("0"));
    });
}

void ControlAccess::lClearInput(std::int16_t category) {
    errors_.trap("lClearInput", [&] {
        for (const std::string_view name : rulesOf(category).blanked)
            field(name).setText(QString());
    });
}

void ControlAccess::focusBrowsing() {
    if (form_.nav.cmdUpdate->isEnabled()) {
        form_.nav.cmdUpdate->setFocus(Qt::OtherFocusReason);
    } else {
        form_.tvwSECSItem->setFocus(Qt::OtherFocusReason);
    }
}

form::Field& ControlAccess::field(std::string_view name) const {
    form::Field* found = fields_.value(toQt(name));
    if (found == nullptr) throw base::objectNotSet();
    return *found;
}

form::ListView& ControlAccess::list(std::string_view name) const {
    for (const form::TwoListEditor* editor :
         {&form_.evt.reports, &form_.rpt.variables, &form_.var.children})
        if (editor->selected->objectName() == toQt(name)) return *editor->selected;
    throw base::objectNotSet();
}

}  // namespace stelvan::editing
