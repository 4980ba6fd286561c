// "&Save": verifies the record and writes it with its links or children as one unit of work.
//
// A refusal or a failure leaves the file as before, and the window in its add or edit mode with everything
// as typed; a second try works once the cause is gone.
#pragma once

#include "editing/edit_context.h"

namespace stelvan::editing {

class SaveRecord {
public:
    explicit SaveRecord(const EditContext& context) : at_(context) {}

    void cmdSave_Click();

private:
    EditContext at_;
};

}  // namespace stelvan::editing
