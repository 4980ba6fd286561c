// Verification of a whole record from the markers of its fields: lists every fault in the
// "Exception:" box, in the order of the caption tables, and tells whether there is none.
#pragma once

#include <QString>
#include <span>
#include <vector>

#include "checks/exception_box.h"
#include "form/frames.h"
#include "gem/record_captions.h"

namespace stelvan::checks {

class RecordChecks {
public:
    RecordChecks(const form::MainForm& form, base::ErrorInfo& errors, ExceptionBox& box);

    [[nodiscard]] base::ErrorInfo& errors() { return errors_; }
    [[nodiscard]] ExceptionBox& box() { return box_; }

    /// True when no field of the record is at fault. After a failure (reported): what was found
    /// before it.
    bool lVerifyVar();
    /// The report's variable list, too, must hold an item.
    bool lVerifyRpt();
    bool lVerifyEvt();
    bool lVerifyAlm();

private:
    struct Listed {
        const form::Field* field;
        QString caption;
    };
    static std::vector<Listed> listed(const form::MainForm& form,
                                      std::span<const gem::FieldCaption> captions);
    bool verify(const char* procedure, const std::vector<Listed>& fields, bool needsItems);

    base::ErrorInfo& errors_;
    ExceptionBox& box_;
    const form::ListView& variables_;
    std::vector<Listed> variable_;
    std::vector<Listed> report_;
    std::vector<Listed> event_;
    std::vector<Listed> alarm_;
};

}  // namespace stelvan::checks
