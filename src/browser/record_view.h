// The record on screen: moving from record to record, the navigator, and copying the record's
// columns into the fields of its property frame.
//
// The position follows the record set's cursor only through this class: who moves the cursor
// elsewhere sets the position and calls lUpdateNavigator and lDisplayField, then refreshLists.
#pragma once

#include <functional>

#include "base/error_info.h"
#include "form/frames.h"
#include "form/main_state.h"
#include "links/event_reports.h"
#include "links/list_children.h"
#include "links/report_variables.h"
#include "settings/setting_inputs.h"

namespace stelvan::browser {

/// The three link editors, as far as showing a record needs them.
struct RecordLists {
    links::EventReports& eventReports;
    links::ReportVariables& reportVariables;
    links::ListChildren& listChildren;
};

class RecordView {
public:
    /// All references must outlive the object.
    RecordView(const form::MainForm& form, form::MainState& state, base::ErrorInfo& errors,
               const RecordLists& lists, settings::SettingInputs& settings);

    /// Clamps the position, then sets the position label, "&Previous", "&Next" and "&Delete".
    void lUpdateNavigator();
    void cmdNext_Click();
    void cmdPrevious_Click();

    /// Copies the current record's columns into the fields; blanks them where there is none. In the
    /// settings category the inputs of the setting are shown, closed.
    void lDisplayField();
    /// Blanks the current category's fields; nothing without a record set, never the settings.
    void lClearField();

    /// True when the last lDisplayField met a Null or failed otherwise: the fields mix two records.
    [[nodiscard]] bool incomplete() const { return incomplete_; }
    /// Shows the record again with every Null as empty text: what an edit or a delete of an
    /// incompletely shown record begins with.
    void displayNullsAsEmpty();

    /// Fills or hides the link lists for the record shown, and empties them where none is shown. In
    /// the GEM variable categories "&Edit" follows the format: a GEM list cannot be edited.
    void refreshLists();
    /// Empties the link lists of all frames, so that no fill that stops early leaves another
    /// record's rows.
    void clearLists();

    /// The format shown in cmbVarFormat, in upper case.
    [[nodiscard]] QString format() const;

    /// Binds the fields of the current category to their columns. Nothing calls it: display copies
    /// values.
    void lLinkDataField();
    /// Runs at the end of lLinkDataField in the variable categories.
    std::function<void()> cmbVarFormat_Change = [] {};
    void lVarHideField() {}

private:
    enum class Nulls { Fail, Empty };
    void showCurrent(Nulls nulls);
    void cleanUp();
    void move(bool forwards);
    void stepForwards(db::Recordset& records);
    void stepBackwards(db::Recordset& records);
    void setMoveButtons(bool previous, bool next);

    const form::MainForm& form_;
    form::MainState& state_;
    base::ErrorInfo& errors_;
    RecordLists lists_;
    settings::SettingInputs& settings_;
    bool incomplete_ = false;
};

}  // namespace stelvan::browser
