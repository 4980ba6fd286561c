// The record on screen: moving from record to record, the navigator, and copying the record's
// columns into the fields of its property frame.
//
// The position follows the record set's cursor only through this class: who moves the cursor
// elsewhere sets the position and calls lUpdateNavigator and lDisplayField, then refreshLists.
#pragma once

#include <cstdint>
#include <functional>

#include "gem/record.h"
#include "links/link_editors.h"
#include "settings/setting_inputs.h"

namespace stelvan::browser {

class RecordView {
public:
    /// Both must outlive the object.
    RecordView(links::LinkEditors& links, settings::SettingInputs& settings);

    /// Clamps the position, then sets the position label and the navigator's buttons.
    void lUpdateNavigator();
    void cmdNext_Click();
    void cmdPrevious_Click();
    /// Shows the n-th record, from 1; the last one for any higher number. Only while browsing.
    void showRecord(std::int32_t position);
    /// Runs at the end of lDisplayField.
    std::function<void()> onDisplayed = [] {};

    /// Copies the current record's columns into the fields; blanks them where there is none. In the
    /// settings category the inputs of the setting are shown, closed. A failure is reported, and
    /// the rest of the window goes on. A record that has left the set, since another program
    /// deleted it or made it another category's, is reported, and the one that follows is shown.
    void lDisplayField();
    /// Blanks the current category's fields; nothing without a record set, never the settings.
    void lClearField();

    /// Empties the fields of the current category, settings included, so that nothing that was
    /// typed stays where a display breaks off.
    void blankFields();

    /// True when the last lDisplayField met a Null or failed otherwise: the fields mix two records.
    [[nodiscard]] bool incomplete() const { return window_.state.displayBroken; }
    /// Shows the record again with every Null as empty text: what an edit or a delete of an
    /// incompletely shown record begins with.
    void displayNullsAsEmpty();

    /// Fills or hides the link lists for the record shown, and empties them where none is shown.
    void refreshLists();

    /// Binds the fields of the current category to their columns. Nothing calls it: display copies
    /// values.
    void lLinkDataField();
    /// Runs at the end of lLinkDataField in the variable categories.
    std::function<void()> cmbVarFormat_Change = [] {};

private:
    enum class Nulls { Fail, Empty };
    void showCurrent(Nulls nulls);
    void showFollower();
    void showColumn(gem::Record& record, const gem::FieldFacts& facts, Nulls nulls) const;
    void blankPlaceholders(const gem::Record& shown) const;
    void move(bool forwards);
    void arrive();
    void stepForwards(db::Recordset& records);
    void stepBackwards(db::Recordset& records);

    form::Window& window_;
    links::LinkEditors& links_;
    settings::SettingInputs& settings_;
};

}  // namespace stelvan::browser
