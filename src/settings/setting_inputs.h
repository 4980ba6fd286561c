// The protocol settings frame: which inputs a setting gets, their verification, and the browse
// buttons.
//
// The text fields hold the values in every case; a choice in a combo box is put into its text field
// at once.
#pragma once

#include <QString>
#include <string>

#include "checks/exception_box.h"
#include "form/frames.h"
#include "form/main_state.h"
#include "gem/settings.h"

namespace stelvan::form {
class Dialogs;
}

namespace stelvan::settings {

class SettingInputs {
public:
    SettingInputs(const form::SttFrame& frame, form::MainState& state, base::ErrorInfo& errors,
                  checks::ExceptionBox& box, form::Dialogs& dialogs);

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

    /// What is stored for one of the two text fields.
    [[nodiscard]] QString storedValue(const form::Field& value) const;

    void txtSttValue_LostFocus();
    void txtSttDefValue_LostFocus();
    void cmbSttValue_Click();
    void cmbSttDefValue_Click();
    void cmdSttBrowse_Click();
    void cmdSttDefBrowse_Click();

private:
    [[nodiscard]] std::string name() const;
    void showInputs(gem::InputKind kind);
    void fillChoices(gem::ChoiceList list);
    /// True when the field is at fault, which is then listed.
    [[nodiscard]] bool listFault(const form::Field& value, const QString& suffix);
    void leave(const char* procedure, form::Field& value);
    void browse(const char* procedure, form::Field& value);

    const form::SttFrame& frame_;
    form::MainState& state_;
    base::ErrorInfo& errors_;
    checks::ExceptionBox& box_;
    form::Dialogs& dialogs_;
};

}  // namespace stelvan::settings
