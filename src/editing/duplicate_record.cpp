#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include "browser/grid_view.h"
#include "editing/edit_commands.h"

namespace stelvan::editing {
namespace {

/// The list that a duplicate takes over. Reports and variables may be linked any number of times;
/// the children of a list variable belong to one list alone.
const form::TwoListEditor* copiedLinks(const form::MainForm& form, std::int16_t category) {
    if (category == gem::CSTEVT) return &form.reports;
    if (category == gem::CSTRPT) return &form.variables;
    return nullptr;
}

}  // namespace

bool EditCommands::mayDuplicate() const {
    const form::MainForm& form = window_.form;
    return recordShown() && form.nav.cmdNew->isEnabled() &&
           form.tspData->currentIndex() == browser::kPropertiesTab - 1;
}

EditCommands::Original EditCommands::shownRecord() const {
    const std::int16_t category = window_.state.category;
    Original original;
    for (const gem::FieldFacts& facts : gem::fieldsOf(category))
        if (!facts.column.empty() && facts.check != gem::Check::Id)
            original.texts.emplace_back(facts.control, window_.form[facts.control].text());
    if (const form::TwoListEditor* links = copiedLinks(window_.form, category))
        original.links = links->selected->rows();
    return original;
}

void EditCommands::cmdDuplicate_Click() {
    if (window_.state.editing() || !mayDuplicate()) return;
    Original original;
    const bool read = window_.errors.handle("cmdDuplicate_Click", [&] {
        completeDisplay();
        original = shownRecord();
    });
    if (read) cmdNew_Click();
    if (!read || window_.state.editMode != form::EditMode::Adding) return;
    window_.errors.handle("cmdDuplicate_Click", [&] { fillFrom(original); });
}

void EditCommands::fillFrom(const Original& original) {
    const std::int16_t category = window_.state.category;
    for (const auto& [control, text] : original.texts)
        if (control == gem::Control::cmbVarFormat) window_.form[control].setText(text);
    if (gem::isCustomVariable(category)) below_.checks.format.lVarSetFormatRight();
    // What the format closes stays empty.
    for (const auto& [control, text] : original.texts)
        if (window_.form[control].isOpen()) window_.form[control].setText(text);
    below_.checks.fields.beginEdit();
    if (const form::TwoListEditor* links = copiedLinks(window_.form, category))
        links->selected->setRows(original.links);
    if (category == gem::CSTRPT) below_.links.reportVariables.sortByNumber();
    const gem::Control name = gem::fieldWith(gem::kindOf(category), gem::Check::Name);
    QWidget* const box = window_.form[name].widget();
    box->setFocus(Qt::OtherFocusReason);
    if (auto* const line = qobject_cast<QLineEdit*>(box)) line->selectAll();
}

}  // namespace stelvan::editing
