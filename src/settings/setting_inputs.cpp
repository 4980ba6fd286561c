#include "settings/setting_inputs.h"

#include <QLabel>
#include <QPushButton>

#include "form/text.h"

namespace stelvan::settings {

using form::Field;

namespace {

using enum gem::Control;

const QString kNoException = QStringLiteral("0");

}  // namespace

SettingInputs::SettingInputs(checks::Checks& checks) : window_(checks.window), box_(checks.box) {}

void SettingInputs::connectFields() {
    const auto on = [](Field* field, void (Field::*signal)(), auto handler) {
        QObject::connect(field, signal, field, handler);
    };
    on(&window_.form[txtSttValue], &Field::lostFocus, [this] { txtSttValue_LostFocus(); });
    on(&window_.form[txtSttDefValue], &Field::lostFocus, [this] { txtSttDefValue_LostFocus(); });
    on(&window_.form[cmbSttValue], &Field::chosen, [this] { cmbSttValue_Click(); });
    on(&window_.form[cmbSttDefValue], &Field::chosen, [this] { cmbSttDefValue_Click(); });
    QObject::connect(window_.form.cmdSttBrowse, &QPushButton::clicked, window_.form.cmdSttBrowse,
                     [this] { cmdSttBrowse_Click(); });
    QObject::connect(window_.form.cmdSttDefBrowse, &QPushButton::clicked,
                     window_.form.cmdSttDefBrowse, [this] { cmdSttDefBrowse_Click(); });
}

std::string SettingInputs::name() const {
    return form::toUtf8(window_.form[txtSttName].text());
}

void SettingInputs::lInitSttInput(bool show) {
    base::trap("lInitSttInput", [&] {
        const gem::SettingRule* const rule = gem::ruleFor(name());
        const gem::InputKind kind = rule == nullptr ? gem::InputKind::NameOnly : rule->input;
        fillChoices(rule == nullptr ? std::span<const std::string_view>() : rule->choices);
        // Every input is either shown or hidden here; hiding all of them first would only cost the
        // focus.
        showInputs(kind);
        lSttSetRightByRecord();
        showFacts(rule);
        if (!show || kind == gem::InputKind::NameOnly) return;
        Field& first =
            kind == gem::InputKind::Combo ? window_.form[cmbSttValue] : window_.form[txtSttValue];
        first.setFocus();
    });
}

void SettingInputs::fillChoices(std::span<const std::string_view> choices) {
    QStringList entries;
    for (const std::string_view choice : choices) entries << form::toQt(choice);
    const auto fill = [&](Field& combo, const Field& value) {
        combo.setEntries(entries);
        // A value that is no entry is shown as the box's hint and stays in its text field.
        combo.setText(value.text());
    };
    fill(window_.form[cmbSttValue], window_.form[txtSttValue]);
    fill(window_.form[cmbSttDefValue], window_.form[txtSttDefValue]);
}

void SettingInputs::showInputs(gem::InputKind kind) {
    const bool combos = kind == gem::InputKind::Combo;
    const bool browse = kind == gem::InputKind::File || kind == gem::InputKind::Folder;
    const bool texts = browse || kind == gem::InputKind::Text;
    window_.form[txtSttValue].setVisible(texts);
    window_.form[txtSttDefValue].setVisible(texts);
    window_.form[cmbSttValue].setVisible(combos);
    window_.form[cmbSttDefValue].setVisible(combos);
    window_.form[chkSttValue].setVisible(false);
    window_.form[chkSttDefValue].setVisible(false);
    window_.form.cmdSttBrowse->setVisible(browse);
    window_.form.cmdSttDefBrowse->setVisible(browse);
}

void SettingInputs::showFacts(const gem::SettingRule* rule) {
    const QString range = rule == nullptr ? QString() : form::toQt(gem::rangeOf(*rule));
    const QString meaning = rule == nullptr ? QString() : form::toQt(rule->meaning);
    window_.form.lblSttRange->setText(range);
    window_.form.lblSttRange->setVisible(!range.isEmpty());
    window_.form.lblSttMeaning->setText(meaning);
    const QString spoken = (range + QLatin1String(". ") + meaning).trimmed();
    for (const gem::Control control : {txtSttValue, cmbSttValue, txtSttDefValue, cmbSttDefValue})
        window_.form[control].setDescription(range.isEmpty() ? meaning : spoken);
}

void SettingInputs::lSttSetRightByRecord() {
    base::trap("lSttSetRightByRecord", [&] {
        // A cancel switches the checks off before the mode changes; the edit is over from there.
        const bool open = window_.judging() && window_.state.editMode == form::EditMode::Editing;
        const form::Colour colour =
            open ? form::Colour::ToolTipBackground : form::Colour::WindowBackground;
        for (Field* text : {&window_.form[txtSttValue], &window_.form[txtSttDefValue]}) {
            text->setLocked(!open);
            text->setColour(colour);
        }
        for (Field* combo : {&window_.form[cmbSttValue], &window_.form[cmbSttDefValue]}) {
            combo->setLocked(!open);
            combo->setEnabled(open);
            combo->setColour(colour);
        }
        window_.form.cmdSttBrowse->setEnabled(open);
        window_.form.cmdSttDefBrowse->setEnabled(open);
    });
}

bool SettingInputs::lVerifySetting(Field& value) {
    return base::trap("lVerifySetting", [&] {
        box_.clear();
        value.setMarker(form::toQt(gem::checkSetting(name(), form::toUtf8(value.text()))));
        bool valid = true;
        for (const gem::FieldFacts* facts :
             gem::inOrder(gem::Kind::ProtocolSettings, &gem::Places::verified))
            valid = !listFault(*facts) && valid;
        return valid;
    });
}

bool SettingInputs::listFault(const gem::FieldFacts& value) {
    const Field& field = window_.form[value.control];
    if (!field.hasException()) return false;
    const QString caption = form::toQt(name()) + form::toQt(value.caption);
    const QString marker = field.marker();
    if (marker == form::toQt(gem::kDatabaseMissing)) {
        box_.lLogError(caption, marker, field.widget());
    } else {
        box_.logMarker(caption, marker, field.widget());
    }
    return true;
}

bool SettingInputs::checkForSave() {
    const auto values = gem::inOrder(gem::Kind::ProtocolSettings, &gem::Places::judged);
    for (const gem::FieldFacts* facts : values)
        window_.form[facts->control].setMarker(kNoException);
    bool judged = true;
    bool valid = false;
    for (const gem::FieldFacts* facts : values) {
        // The last one sees the markers of both.
        judged = window_.errors.handle("cmdSave_Click", [&] {
            valid = lVerifySetting(window_.form[facts->control]);
        }) && judged;
    }
    return judged && valid;
}

void SettingInputs::leave(const char* procedure, Field& value) {
    if (!window_.judging()) return;
    window_.errors.handle(procedure, [&] { lVerifySetting(value); });
}

void SettingInputs::txtSttValue_LostFocus() {
    leave("txtSttValue_LostFocus", window_.form[txtSttValue]);
}

void SettingInputs::txtSttDefValue_LostFocus() {
    leave("txtSttDefValue_LostFocus", window_.form[txtSttDefValue]);
}

void SettingInputs::cmbSttValue_Click() {
    window_.errors.handle("cmbSttValue_Click", [&] {
        window_.form[txtSttValue].setText(window_.form[cmbSttValue].text());
    });
}

void SettingInputs::cmbSttDefValue_Click() {
    window_.errors.handle("cmbSttDefValue_Click", [&] {
        window_.form[txtSttDefValue].setText(window_.form[cmbSttDefValue].text());
    });
}

void SettingInputs::browse(const char* procedure, Field& value) {
    window_.errors.handle(procedure, [&] {
        const gem::SettingRule* const rule = gem::ruleFor(name());
        const QString title = QStringLiteral("Select file...");
        // A file can never be what a folder setting asks for.
        const QString chosen =
            rule != nullptr && rule->input == gem::InputKind::Folder
                ? window_.dialogs.openFolder(title, value.text())
                : window_.dialogs.openFile(title, QStringLiteral("All files (*)"), value.text());
        if (chosen.isEmpty()) return;
        value.setText(chosen);
        // The fault of the former text may still be listed.
        leave(procedure, value);
    });
}

void SettingInputs::cmdSttBrowse_Click() {
    browse("cmdSttBrowse_Click", window_.form[txtSttValue]);
}

void SettingInputs::cmdSttDefBrowse_Click() {
    browse("cmdSttDefBrowse_Click", window_.form[txtSttDefValue]);
}

}  // namespace stelvan::settings
