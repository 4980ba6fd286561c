// What happens when the user leaves a field: the check of that field, its marker, and the
// "Exception:" box rebuilt. The same checks run, in a fixed order, before a save.
//
// Checks run only while adding or editing (EditMode 1 and 2, MainState::checksEnabled), and a
// closed field is always valid: what the user cannot change is not judged.
#pragma once

#include <QSet>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "checks/alarm_links.h"
#include "checks/record_checks.h"
#include "checks/value_checks.h"
#include "checks/variable_format.h"
#include "db/operations.h"
#include "form/frames.h"
#include "form/main_state.h"
#include "gem/ids_and_names.h"

namespace stelvan::checks {

class FieldChecks {
public:
    FieldChecks(const form::MainForm& form, form::MainState& state, db::Operations& database,
                RecordChecks& records, VariableFormat& format, ValueChecks& values);

    /// Connects the signals of every checked field to its handler. Once, when the window is built.
    void connectFields();

    /// An edit begins: forgets what belongs to the former one. To be called by "&Add New" and
    /// "&Edit" after lInitCtrlForEdit and before lVarSetFormatRight.
    void beginEdit();

    /// All checks of a category in the order of the save, then its verification (categories 1 to 9
    /// and 11; the settings have their own). False when a field is at fault or a check failed: what
    /// could not be judged is not saved. Beyond 32 bits U8 and I8 limits cannot be compared; that
    /// is reported, and saved.
    [[nodiscard]] bool checkForSave(std::int16_t category);

    void txtVarName_LostFocus() { leave(*form_.var.txtVarName); }
    void txtVarID_LostFocus() { leave(*form_.var.txtVarID); }
    void txtVarGroup_LostFocus() { leave(*form_.var.txtVarGroup); }
    void txtVarDesc_LostFocus() { leave(*form_.var.txtVarDesc); }
    void txtVarMin_LostFocus() { leave(*form_.var.txtVarMin); }
    void txtVarMax_LostFocus() { leave(*form_.var.txtVarMax); }
    void txtVarUnit_LostFocus() { leave(*form_.var.txtVarUnit); }
    void txtVarDefValue_LostFocus() { leave(*form_.var.txtVarDefValue); }
    void txtVarValue_LostFocus() { leave(*form_.var.txtVarValue); }
    void txtVarDesc_Change() { noteChange(*form_.var.txtVarDesc); }

    /// A choice in the format box, or typing into it: fields, markers and box follow.
    void cmbVarFormat_Change() { followFormat("cmbVarFormat_Change"); }
    void cmbVarFormat_Click() { followFormat("cmbVarFormat_Click"); }
    void cmbVarFormat_LostFocus();

    /// A complaint, and the focus back, for a text that is not numeric; false then.
    bool txtVarLmtCEID_Validate();
    /// On to cmdUpdate, once the click or key that took the focus has been carried out.
    void txtVarLmtCEID_LostFocus();

    void txtAlmName_LostFocus() { leave(*form_.alm.txtAlmName); }
    void txtAlmID_LostFocus() { leave(*form_.alm.txtAlmID); }
    void txtAlmGroup_LostFocus() { leave(*form_.alm.txtAlmGroup); }
    void txtAlmText_LostFocus() { leave(*form_.alm.txtAlmText); }
    void txtAlmSetCEName_LostFocus() { leave(*form_.alm.txtAlmSetCEName); }
    void txtAlmSetCEID_LostFocus() { leave(*form_.alm.txtAlmSetCEID); }
    void txtAlmClrCEName_LostFocus() { leave(*form_.alm.txtAlmClrCEName); }
    void txtAlmClrCEID_LostFocus() { leave(*form_.alm.txtAlmClrCEID); }

    void txtEvtName_LostFocus() { leave(*form_.evt.txtEvtName); }
    void txtEvtID_LostFocus() { leave(*form_.evt.txtEvtID); }
    void txtEvtGroup_LostFocus() { leave(*form_.evt.txtEvtGroup); }
    void txtEvtDesc_LostFocus() { leave(*form_.evt.txtEvtDesc); }

    void txtRptName_LostFocus() { leave(*form_.rpt.txtRptName); }
    void txtRptID_LostFocus() { leave(*form_.rpt.txtRptID); }
    void txtRptDesc_LostFocus() { leave(*form_.rpt.txtRptDesc); }

private:
    using Judge = std::function<void(form::Field&, Moment)>;
    using Verify = bool (RecordChecks::*)();

    /// One checked field: under which names its handlers report, how it is judged, what verifies
    /// its record.
    struct Check {
        form::Field* field;
        const char* lostFocus;
        const char* change;
        Judge judge;
        Verify verify;
    };

    void add(Verify verify, form::Field* field, const char* lostFocus, const char* change,
             Judge judge);
    void addVariable();
    void addAlarm();
    void addEvent();
    void addReport();
    [[nodiscard]] const Check& checkOf(const form::Field& field) const;

    void leave(form::Field& field);
    /// Sets the field's marker; a closed field is valid.
    static void judge(const Check& check, Moment moment);
    void noteChange(form::Field& field);
    void followFormat(const char* procedure);
    void judgeId(form::Field& field, const gem::RecordRules& rules);
    void judgeName(form::Field& field, const gem::RecordRules& rules,
                   const std::string& loadedName);
    void judgeAlarmEvent(form::Field& field, Moment moment);
    /// Whether the value stands in one of the columns; nothing when the database could not tell
    /// (reported).
    [[nodiscard]] std::optional<bool> standsIn(std::span<const gem::SearchedColumn> columns,
                                               const std::string& value);
    [[nodiscard]] bool checkVariableForSave();
    [[nodiscard]] bool checkAlarmForSave();
    [[nodiscard]] bool checkForSave(const std::vector<form::Field*>& fields, Verify verify);
    /// False when a check failed: what could not be judged is not saved.
    [[nodiscard]] bool runForSave(const std::vector<form::Field*>& fields);
    [[nodiscard]] bool judging() const { return state_.editing() && state_.checksEnabled; }

    const form::MainForm& form_;
    form::MainState& state_;
    db::Operations& database_;
    base::ErrorInfo& errors_;
    RecordChecks& records_;
    VariableFormat& format_;
    ValueChecks& values_;
    AlarmLinks alarmLinks_;
    std::vector<Check> checks_;
    QSet<const form::Field*> changed_;  // by the user, since their last check
    QString lastFormat_;                // the text that fields and markers follow
};

}  // namespace stelvan::checks
