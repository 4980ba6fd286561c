// "&Save": verifies the record and writes it with its links or children as one unit of work.
//
// A refusal or a failure leaves the file as before, and the window in its add or edit mode with
// everything as typed; a second try works once the cause is gone. Once stored, the window browses
// whatever happens.
#pragma once

#include "browser/browser.h"
#include "editing/control_access.h"
#include "editing/undo_last.h"

namespace stelvan::editing {

class SaveRecord {
public:
    /// All must outlive the object.
    SaveRecord(browser::Browser& below, ControlAccess& access, SafetyCopy& copy, UndoLast& undo)
        : below_(below), window_(below.window), access_(access), copy_(copy), undo_(undo) {}

    void cmdSave_Click();

private:
    [[nodiscard]] bool verified();
    /// False where the user wants no save without a copy.
    [[nodiscard]] bool store();
    void write(const gem::Record& record);
    void requireFilledList() const;
    void writeLinks(const gem::Record& record, bool wasList);
    void showStored();

    browser::Browser& below_;
    form::Window& window_;
    ControlAccess& access_;
    SafetyCopy& copy_;
    UndoLast& undo_;
};

}  // namespace stelvan::editing
