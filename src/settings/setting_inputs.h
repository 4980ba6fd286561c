// The protocol settings frame: which inputs a setting gets, their verification, and the browse
// buttons.
//
// The text fields hold the values in every case; a choice in a combo box is put into its text field
// at once.
#pragma once

#include <QString>
#include <span>
#include <string>
#include <string_view>

#include "checks/checks.h"
#include "gem/kinds.h"
#include "gem/settings.h"

namespace stelvan::settings {

class SettingInputs {
public:
    /// `checks` must outlive the object.
    explicit SettingInputs(checks::Checks& checks);

    /// Connects combo boxes, browse buttons and focus loss. Once, when the window is built.
    void connectFields();

    /// Shows exactly the inputs that belong to the setting in txtSttName, with the values of the
    /// text fields, and sets their rights. With true (an edit begins) the first of them also takes
    /// the focus.
    void lInitSttInput(bool show);

    /// Opens the inputs while editing (colour 24), closes them otherwise (window background).
    void lSttSetRightByRecord();

    /// Checks one of txtSttValue and txtSttDefValue, marks it, and lists the faults of both. True
    /// when both are valid.
    bool lVerifySetting(form::Field& value);

    /// Both fields for the save, markers cleared first. False when one is at fault or could not be
    /// judged.
    [[nodiscard]] bool checkForSave();

    void txtSttValue_LostFocus();
    void txtSttDefValue_LostFocus();
    void cmbSttValue_Click();
    void cmbSttDefValue_Click();
    void cmdSttBrowse_Click();
    void cmdSttDefBrowse_Click();

private:
    [[nodiscard]] std::string name() const;
    void showInputs(gem::InputKind kind);
    /// Range, unit and meaning beside the inputs, and as their description.
    void showFacts(const gem::SettingRule* rule);
    void fillChoices(std::span<const std::string_view> choices);
    /// True when the field is at fault, which is then listed.
    [[nodiscard]] bool listFault(const gem::FieldFacts& value);
    void leave(const char* procedure, form::Field& value);
    void browse(const char* procedure, form::Field& value);

    form::Window& window_;
    checks::ExceptionBox& box_;
};

}  // namespace stelvan::settings
