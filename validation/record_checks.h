// Verification of a whole record from the markers of its fields: lists every fault in the "Exception:" box,
// in the order of the caption tables, and tells whether there is none.
#pragma once

#include <cstdint>

#include "app/form/frames.h"
#include "validation/exception_box.h"

namespace stelvan::validation {

class RecordChecks {
public:
    RecordChecks(const form::MainForm& form, ErrorInfo& errors, ExceptionBox& box);

    [[nodiscard]] ErrorInfo& errors() { return errors_; }
    [[nodiscard]] ExceptionBox& box() { return box_; }

    /// True when no field of the record is at fault. After a failure (reported): what was found before it.
    bool lVerifyVar();
    /// The report's variable list, too, must hold an item.
    bool lVerifyRpt();
    bool lVerifyEvt();
    bool lVerifyAlm();

private:
    const form::MainForm& form_;
    ErrorInfo& errors_;
    ExceptionBox& box_;
};

}  // namespace stelvan::validation
