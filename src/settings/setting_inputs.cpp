#include "settings/setting_inputs.h"

#include <QPushButton>
#include <span>

#include "form/dialogs.h"
#include "form/fixed_lists.h"
#include "form/text.h"
#include "gem/settings.h"

namespace stelvan::settings {

using form::Field;

namespace {

QStringList textsOf(std::span<const std::string_view> entries) {
    QStringList texts;
    for (const std::string_view entry : entries) texts << form::toQt(entry);
    return texts;
}

QStringList entriesOf(gem::ChoiceList list) {
    switch (list) {
        case gem::ChoiceList::BaudRates:
            return textsOf(form::kBaudRates);
        case gem::ChoiceList::ConnectionTypes:
            return textsOf(form::kConnectionTypes);
        case gem::ChoiceList::HsmsModes:
            return textsOf(form::kHsmsModes);
        case gem::ChoiceList::TrueFalse:
            return {QStringLiteral("TRUE"), QStringLiteral("FALSE")};
        case gem::ChoiceList::None:
            break;
    }
    return {};
}

const QString kNoException = QStringLiteral("0");

}  // namespace

SettingInputs::SettingInputs(const form::SttFrame& frame, form::MainState& state,
                             base::ErrorInfo& errors, checks::ExceptionBox& box,
                             form::Dialogs& dialogs)
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
        const gem::SettingRule* const rule = gem::ruleFor(name());
        const gem::InputKind kind = rule == nullptr ? gem::InputKind::NameOnly : rule->input;
        fillChoices(rule == nullptr ? gem::ChoiceList::None : rule->choices);
        // Every input is either shown or hidden here; hiding all of them first would only cost the
        // focus.
        showInputs(kind);
        lSttSetRightByRecord();
        if (!show || kind == gem::InputKind::NameOnly) return;
        Field& first = kind == gem::InputKind::Combo ? *frame_.cmbSttValue : *frame_.txtSttValue;
        first.setFocus();
    });
}

void SettingInputs::fillChoices(gem::ChoiceList list) {
    const QStringList entries = entriesOf(list);
    const auto fill = [&](Field& combo, const Field& value) {
        combo.setEntries(entries);
        // A value that is no entry is shown as the box's hint and stays in its text field.
        combo.setText(value.text());
    };
    fill(*frame_.cmbSttValue, *frame_.txtSttValue);
    fill(*frame_.cmbSttDefValue, *frame_.txtSttDefValue);
}

void SettingInputs::showInputs(gem::InputKind kind) {
    const bool combos = kind == gem::InputKind::Combo;
    const bool browse = kind == gem::InputKind::File || kind == gem::InputKind::Folder;
    const bool texts = browse || kind == gem::InputKind::Text;
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
        const form::Colour colour =
            open ? form::Colour::ToolTipBackground : form::Colour::WindowBackground;
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
        value.setMarker(form::toQt(gem::checkSetting(name(), form::toUtf8(value.text()))));
        valid = !listFault(*frame_.txtSttValue, QStringLiteral("Value::"));
        valid = !listFault(*frame_.txtSttDefValue, QStringLiteral("Default Value::")) && valid;
    });
    return valid;
}

bool SettingInputs::listFault(const Field& value, const QString& suffix) {
    if (!value.hasException()) return false;
    const QString caption = form::toQt(name()) + suffix;
    const QString marker = value.marker();
    if (marker == form::toQt(gem::kDatabaseMissing)) {
        box_.lLogError(caption, marker);
    } else {
        box_.logMarker(caption, marker);
    }
    return true;
}

bool SettingInputs::checkForSave() {
    const base::FailureWatch watch(errors_);
    frame_.txtSttValue->setMarker(kNoException);
    frame_.txtSttDefValue->setMarker(kNoException);
    lVerifySetting(*frame_.txtSttValue);
    const bool valid = lVerifySetting(*frame_.txtSttDefValue);  // sees both markers
    return valid && !watch.failed();
}

QString SettingInputs::storedValue(const Field& value) const {
    return form::toQt(gem::storedText(name(), form::toUtf8(value.text())));
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
    errors_.trap("cmbSttValue_Click",
                 [&] { frame_.txtSttValue->setText(frame_.cmbSttValue->text()); });
}

void SettingInputs::cmbSttDefValue_Click() {
    errors_.trap("cmbSttDefValue_Click",
                 [&] { frame_.txtSttDefValue->setText(frame_.cmbSttDefValue->text()); });
}

void SettingInputs::browse(const char* procedure, Field& value) {
    errors_.trap(procedure, [&] {
        const gem::SettingRule* const rule = gem::ruleFor(name());
        const QString title = QStringLiteral("Select file...");
        // A file can never be what a folder setting asks for.
        const QString chosen =
            rule != nullptr && rule->input == gem::InputKind::Folder
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
