#include "settings/setting_inputs.h"

#include <QPushButton>
#include <span>

#include "app/form/dialogs.h"
#include "app/form/fixed_lists.h"
#include "app/form/text.h"
#include "settings/rules/setting_rules.h"

namespace stelvan::settings {

using form::Field;

namespace {

QStringList textsOf(std::span<const std::string_view> entries) {
    QStringList texts;
    for (const std::string_view entry : entries) texts << form::toQt(entry);
    return texts;
}

QStringList entriesOf(ChoiceList list) {
    switch (list) {
        case ChoiceList::BaudRates:
            return textsOf(form::kBaudRates);
        case ChoiceList::ConnectionTypes:
            return textsOf(form::kConnectionTypes);
        case ChoiceList::HsmsModes:
            return textsOf(form::kHsmsModes);
        case ChoiceList::TrueFalse:
            return {QStringLiteral("TRUE"), QStringLiteral("FALSE")};
        case ChoiceList::None:
            break;
    }
    return {};
}

const QString kNoException = QStringLiteral("0");

}  // namespace

SettingInputs::SettingInputs(const form::SttFrame& frame, form::MainState& state, ErrorInfo& errors,
                             validation::ExceptionBox& box, form::Dialogs& dialogs)
    : frame_(frame), state_(state), errors_(errors), box_(box), dialogs_(dialogs) {}

void SettingInputs::connectFields() {
    const auto on = [](Field* field, void (Field::*signal)(), auto handler) {
        QObject::connect(field, signal, field, handler);
    };
    on(frame_.txtSttValue, &Field::lostFocus, [this] { txtSttValue_LostFocus(); });
    on(frame_.txtSttDefValue, &Field::lostFocus, [this] { txtSttDefValue_LostFocus(); });
    on(frame_.cmbSttValue, &Field::chosen, [this] { cmbSttValue_Click(); });
    on(frame_.cmbSttDefValue, &Field::chosen, [this] { cmbSttDefValue_Click(); });
    QObject::connect(frame_.cmdSttBrowse, &QPushButton::clicked, frame_.cmdSttBrowse,
                     [this] { cmdSttBrowse_Click(); });
    QObject::connect(frame_.cmdSttDefBrowse, &QPushButton::clicked, frame_.cmdSttDefBrowse,
                     [this] { cmdSttDefBrowse_Click(); });
}

std::string SettingInputs::name() const {
    return form::toUtf8(frame_.txtSttName->text());
}

void SettingInputs::lInitSttInput(bool show) {
    errors_.trap("lInitSttInput", [&] {
        const SettingRule* const rule = ruleFor(name());
        const InputKind kind = rule == nullptr ? InputKind::NameOnly : rule->input;
        fillChoices(rule == nullptr ? ChoiceList::None : rule->choices);
        // Every input is either shown or hidden here; hiding all of them first would only cost the focus.
        showInputs(kind);
        lSttSetRightByRecord();
        if (!show || kind == InputKind::NameOnly) return;
        Field& first = kind == InputKind::Combo ? *frame_.cmbSttValue : *frame_.txtSttValue;
        first.setFocus();
    });
}

void SettingInputs::fillChoices(ChoiceList list) {
    const QStringList entries = entriesOf(list);
    const auto fill = [&](Field& combo, const Field& value) {
        combo.setEntries(entries);
        // A value that is no entry is shown as the box's hint and stays in its text field.
        combo.setText(value.text());
    };
    fill(*frame_.cmbSttValue, *frame_.txtSttValue);
    fill(*frame_.cmbSttDefValue, *frame_.txtSttDefValue);
}

void SettingInputs::showInputs(InputKind kind) {
    const bool combos = kind == InputKind::Combo;
    const bool browse = kind == InputKind::File || kind == InputKind::Folder;
    const bool texts = browse || kind == InputKind::Text;
    frame_.txtSttValue->setVisible(texts);
    frame_.txtSttDefValue->setVisible(texts);
    frame_.cmbSttValue->setVisible(combos);
    frame_.cmbSttDefValue->setVisible(combos);
    frame_.chkSttValue->setVisible(false);
    frame_.chkSttDefValue->setVisible(false);
    frame_.cmdSttBrowse->setVisible(browse);
    frame_.cmdSttDefBrowse->setVisible(browse);
}

void SettingInputs::lSttSetRightByRecord() {
    errors_.trap("lSttSetRightByRecord", [&] {
        // A cancel switches the checks off before the mode changes; the edit is over from there.
        const bool open = state_.editMode == form::EditMode::Editing && state_.checksEnabled;
        const form::Colour colour = open ? form::Colour::ToolTipBackground : form::Colour::WindowBackground;
        for (Field* text : {frame_.txtSttValue, frame_.txtSttDefValue}) {
            text->setLocked(!open);
            text->setColour(colour);
        }
        for (Field* combo : {frame_.cmbSttValue, frame_.cmbSttDefValue}) {
            combo->setLocked(!open);
            combo->setEnabled(open);
            combo->setColour(colour);
        }
        frame_.cmdSttBrowse->setEnabled(open);
        frame_.cmdSttDefBrowse->setEnabled(open);
    });
}

bool SettingInputs::lVerifySetting(Field& value) {
    bool valid = true;
    errors_.trap("lVerifySetting", [&] {
        box_.clear();
        value.setMarker(form::toQt(checkSetting(name(), form::toUtf8(value.text()))));
        valid = !listFault(*frame_.txtSttValue, QStringLiteral("Value::"));
        valid = !listFault(*frame_.txtSttDefValue, QStringLiteral("Default Value::")) && valid;
    });
    return valid;
}

bool SettingInputs::listFault(const Field& value, const QString& suffix) {
    if (!value.hasException()) return false;
    const QString caption = form::toQt(name()) + suffix;
    const QString marker = value.marker();
    if (marker == form::toQt(kDatabaseMissing)) {
        box_.lLogError(caption, marker);
    } else {
        box_.logMarker(caption, marker);
    }
    return true;
}

bool SettingInputs::checkForSave() {
    const FailureWatch watch(errors_);
    frame_.txtSttValue->setMarker(kNoException);
    frame_.txtSttDefValue->setMarker(kNoException);
    lVerifySetting(*frame_.txtSttValue);
    const bool valid = lVerifySetting(*frame_.txtSttDefValue);  // sees both markers
    return valid && !watch.failed();
}

QString SettingInputs::storedValue(const Field& value) const {
    return form::toQt(storedText(name(), form::toUtf8(value.text())));
}

void SettingInputs::leave(const char* procedure, Field& value) {
    if (!state_.editing() || !state_.checksEnabled) return;
    errors_.trap(procedure, [&] { lVerifySetting(value); });
}

void SettingInputs::txtSttValue_LostFocus() {
    leave("txtSttValue_LostFocus", *frame_.txtSttValue);
}

void SettingInputs::txtSttDefValue_LostFocus() {
    leave("txtSttDefValue_LostFocus", *frame_.txtSttDefValue);
}

void SettingInputs::cmbSttValue_Click() {
    errors_.trap("cmbSttValue_Click", [&] { frame_.txtSttValue->setText(frame_.cmbSttValue->text()); });
}

void SettingInputs::cmbSttDefValue_Click() {
    errors_.trap("cmbSttDefValue_Click",
                 [&] { frame_.txtSttDefValue->setText(frame_.cmbSttDefValue->text()); });
}

void SettingInputs::browse(const char* procedure, Field& value) {
    errors_.trap(procedure, [&] {
        const SettingRule* const rule = ruleFor(name());
        const QString title = QStringLiteral("Select file...");
        // A file can never be what a folder setting asks for.
        const QString chosen = rule != nullptr && rule->input == InputKind::Folder
                                   ? dialogs_.openFolder(title, value.text())
                                   : dialogs_.openFile(title, QStringLiteral("All files (*)"), value.text());
        if (chosen.isEmpty()) return;
        value.setText(chosen);
        // The fault of the former text may still be listed.
        leave(procedure, value);
    });
}

void SettingInputs::cmdSttBrowse_Click() {
    browse("cmdSttBrowse_Click", *frame_.txtSttValue);
}

void SettingInputs::cmdSttDefBrowse_Click() {
    browse("cmdSttDefBrowse_Click", *frame_.txtSttDefValue);
}

}  // namespace stelvan::settings
