// "&Save": verifies the record and writes it with its links or children as one unit of work.
//
// A refusal or a failure leaves the file as before, and the window in its add or edit mode with
// everything as typed; a second try works once the cause is gone. Once stored, the window browses
// whatever happens.
#pragma once

#include "editing/edit_context.h"

namespace stelvan::editing {

class SaveRecord {
public:
    explicit SaveRecord(const EditContext& context) : at_(context) {}

    void cmdSave_Click();

private:
    [[nodiscard]] bool verified();
    [[nodiscard]] bool store();
    void requireFilledList() const;
    void writeColumns(db::Recordset& record);
    [[nodiscard]] bool writeLinks();
    [[nodiscard]] bool writeChildren();
    [[nodiscard]] bool wasList() const;
    void showStored();

    EditContext at_;
};

}  // namespace stelvan::editing
