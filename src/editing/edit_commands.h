// The buttons that begin, give up and undo work on a record: "&Edit", "&Cancel", "&Add New",
// "&Delete".
//
// Whatever fails before the inputs are open leaves the window browsing; a cancel always ends in
// browsing.
#pragma once

#include "editing/edit_context.h"

namespace stelvan::editing {

class EditCommands {
public:
    explicit EditCommands(const EditContext& context) : at_(context) {}

    void cmdUpdate_Click();
    void cmdCancel_Click();
    void cmdNew_Click();
    /// Record, links and released children go in one unit of work.
    void cmdDelete_Click();

private:
    [[nodiscard]] bool recordShown() const;
    /// Shows the record whole when its display broke off at a Null; false when that failed, too.
    bool completeDisplay();
    [[nodiscard]] bool mayEdit() const;
    void rememberPlace();
    void loadNames();
    void openInputs();
    void beginAt(std::int16_t category);
    void beginNewAt(std::int16_t category);
    void closeValueFields();
    void backToBrowsing(const char* procedure);
    void returnToRecord();
    void showStoredLists();
    void deleteShown();
    [[nodiscard]] bool deleteLinked();
    void showFollower();
    void showPresentState();

    EditContext at_;
};

}  // namespace stelvan::editing
