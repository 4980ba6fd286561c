// The buttons that begin, give up and undo work on a record: "&Edit", "&Cancel", "&Add New",
// "&Delete", and "Duplicate".
//
// Whatever fails before the inputs are open leaves the window browsing; a cancel always ends in
// browsing.
#pragma once

#include "browser/browser.h"
#include "editing/control_access.h"
#include "editing/undo_last.h"

namespace stelvan::editing {

class EditCommands {
public:
    /// All must outlive the object.
    EditCommands(browser::Browser& below, ControlAccess& access, SafetyCopy& copy, UndoLast& undo)
        : below_(below), window_(below.window), access_(access), copy_(copy), undo_(undo) {}

    void cmdUpdate_Click();
    void cmdCancel_Click();
    void cmdNew_Click();
    /// Begins a record filled from the one shown: all but the identifier, which is proposed anew,
    /// and the children of a list, which can be in one list only. The name is taken over, selected,
    /// to be changed. Nothing while a record is added or edited, nor unless mayDuplicate().
    void cmdDuplicate_Click();
    /// Whether a record is shown, in "Properties", to whose kind one may be added now.
    [[nodiscard]] bool mayDuplicate() const;
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
    /// What a duplicate takes over: texts by field, and the rows of a list of links.
    struct Original {
        std::vector<std::pair<gem::Control, QString>> texts;
        std::vector<form::ListRow> links;
    };
    [[nodiscard]] Original shownRecord() const;
    void fillFrom(const Original& original);
    void deleteShown();
    void showFollower();
    void showPresentState();

    browser::Browser& below_;
    form::Window& window_;
    ControlAccess& access_;
    SafetyCopy& copy_;
    UndoLast& undo_;
};

}  // namespace stelvan::editing
