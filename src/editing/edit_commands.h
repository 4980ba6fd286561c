// The buttons that begin, give up and undo work on a record: "&Edit", "&Cancel", "&Add New",
// "&Delete".
//
// Whatever fails before the inputs are open leaves the window browsing; a cancel always ends in
// browsing.
#pragma once

#include "browser/browser.h"
#include "editing/control_access.h"

namespace stelvan::editing {

class EditCommands {
public:
    /// Both must outlive the object.
    EditCommands(browser::Browser& below, ControlAccess& access)
        : below_(below), window_(below.window), access_(access) {}

    void cmdUpdate_Click();
    void cmdCancel_Click();
    void cmdNew_Click();
    /// Record, links and released children go in one unit of work.
    void cmdDelete_Click();

private:
    [[nodiscard]] bool recordShown() const { return window_.state.current.onRecord(); }
    /// Shows the record whole when its display broke off at a Null. Throws when that fails, too.
    void completeDisplay();
    [[nodiscard]] bool mayEdit() const;
    void rememberPlace();
    void loadName();
    void openInputs();
    void beginEditing();
    void beginAdding();
    void proposeId();
    void focusFirst();
    void backToBrowsing(const char* procedure);
    void returnToRecord();
    void showStoredLists();
    void closeEdit();
    void deleteShown();
    void showFollower();
    void showPresentState();

    browser::Browser& below_;
    form::Window& window_;
    ControlAccess& access_;
};

}  // namespace stelvan::editing
