// What happens when the user leaves a field: that field is judged, its marker set, and the
// "Exception:" box rebuilt. The same checks run, in a fixed order, before a save.
//
// Checks run only while adding or editing, and a closed field is always valid: what the user cannot
// change is not judged.
#pragma once

#include <QSet>
#include <QString>
#include <cstdint>

#include "checks/alarm_links.h"
#include "checks/record_checks.h"
#include "checks/record_fields.h"
#include "checks/variable_format.h"
#include "gem/kinds.h"

namespace stelvan::checks {

struct Checks;

class FieldChecks {
public:
    /// `checks` holds the object; its other members are made before.
    FieldChecks(form::Window& window, Checks& checks);

    /// Connects the signals of every checked field to its handler. Once, when the window is built.
    void connectFields();

    /// An edit begins: forgets what belongs to the former one. To be called by "&Add New" and
    /// "&Edit" after lInitCtrlForEdit and before lVarSetFormatRight.
    void beginEdit();

    /// All checks of a category in the order of the save, then its verification (categories 2 to 9
    /// and 11; the settings have their own). False when a field is at fault or a check failed: what
    /// could not be judged is not saved. Limits of U8 and I8 beyond 32 bits cannot be compared;
    /// that is reported, and saved.
    [[nodiscard]] bool checkForSave(std::int16_t category);

    /// A choice in the format box, or typing into it: fields, markers and box follow.
    void cmbVarFormat_Change() { followFormat("cmbVarFormat_Change"); }
    void cmbVarFormat_Click() { followFormat("cmbVarFormat_Click"); }
    void cmbVarFormat_LostFocus();

    /// A complaint, and the focus back, for a text that is not numeric; false then.
    bool txtVarLmtCEID_Validate();
    /// On to cmdUpdate, once the click or key that took the focus has been carried out.
    void txtVarLmtCEID_LostFocus();

private:
    void connectField(const gem::FieldFacts& facts);
    void connectFormat();
    void leave(const gem::FieldFacts& facts);
    void noteChange(const gem::FieldFacts& facts);
    void followFormat(const char* procedure);
    /// False when the check failed: what could not be judged is not saved.
    [[nodiscard]] bool judgeForSave(const gem::FieldFacts& facts);

    form::Window& window_;
    Checks& checks_;
    QSet<gem::Control> changed_;  // by the user, since their last check
    QString lastFormat_;          // the text that fields and markers follow
};

}  // namespace stelvan::checks
