// "Undo": takes back what this session saved, deleted or took in, the last first and each as one
// unit of work, links and children included.
//
// Only while browsing: in a field that is being edited Ctrl+Z is the field's own. What another
// program has changed since is not overwritten; the undo is refused then, and can be tried again.
#pragma once

#include <string>

#include "browser/browser.h"
#include "db/undo.h"
#include "editing/safety_copy.h"

namespace stelvan::editing {

class UndoLast {
public:
    /// Both must outlive the object.
    UndoLast(browser::Browser& below, SafetyCopy& copy)
        : below_(below), window_(below.window), copy_(copy) {}

    /// Puts itself behind the tool; once.
    void connectTool();

    /// A unit of work on the open database was committed. `what` begins a sentence ("Save of
    /// variable 101", "Import of line3"); `subject` is the record to show once it is taken back,
    /// by category and identifier, and empty where there is no single one.
    void noteDone(const std::string& what, jet::RowChanges changes, db::UnitSubject subject = {});
    /// The same of the record on screen: "Save" becomes "Save of variable 101".
    void noteDone(const char* deed, const browser::RecordAddress& record, jet::RowChanges changes);

    /// Takes the last one back and shows its record, read anew from the file; where that is there
    /// no longer, the one that was on screen.
    void cmdUndo_Click();
    [[nodiscard]] bool mayUndo() const { return !window_.state.editing() && !history_.empty(); }

    /// Another database is open.
    void forget();

private:
    void show(const db::DoneUnit& undone, const std::optional<browser::RecordAddress>& before);
    void followTool();

    browser::Browser& below_;
    form::Window& window_;
    SafetyCopy& copy_;
    db::UndoHistory history_;
};

}  // namespace stelvan::editing
