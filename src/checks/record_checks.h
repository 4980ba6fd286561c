// Verification of a whole record from the markers of its fields: lists every fault in the
// "Exception:" box, in the order of the fields' places, and tells whether there is none.
#pragma once

#include "checks/exception_box.h"
#include "form/frames.h"
#include "gem/categories.h"

namespace stelvan::checks {

class RecordChecks {
public:
    /// Both must outlive the object.
    RecordChecks(const form::MainForm& form, ExceptionBox& box) : form_(form), box_(box) {}

    /// True when no field of the record is at fault. Throws RunTimeError for a marker that names no
    /// exception; what was found before it is listed.
    bool lVerifyVar() { return verify(gem::Kind::Variable); }
    /// The report's variable list, too, must hold an item.
    bool lVerifyRpt() { return verify(gem::Kind::Report); }
    bool lVerifyEvt() { return verify(gem::Kind::CollectionEvent); }
    bool lVerifyAlm() { return verify(gem::Kind::Alarm); }

    /// One of the four, by the kind of record.
    bool verify(gem::Kind kind);

private:
    /// The variables of a report: there must be one.
    bool verifyList();

    const form::MainForm& form_;
    ExceptionBox& box_;
};

}  // namespace stelvan::checks
