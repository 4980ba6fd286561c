// Value, default value, minimum and maximum of a variable: each against its format, and all against
// one another.
//
// A check sets markers only; verifying the record, and the trap, belong to the handler that calls
// it.
#pragma once

#include <string>

#include "checks/variable_format.h"
#include "form/frames.h"

namespace stelvan::checks {

/// When a check runs. At the save a blank limit counts as the 0 that will be stored.
enum class Moment { Leaving, Saving };

class ValueChecks {
public:
    ValueChecks(const form::VarFrame& frame, base::ErrorInfo& errors, VariableFormat& format);

    void checkMin(Moment moment) { checkLimit(*frame_.txtVarMin, *frame_.txtVarMax, moment); }
    void checkMax(Moment moment) { checkLimit(*frame_.txtVarMax, *frame_.txtVarMin, moment); }
    void checkValue(Moment moment) { checkContent(*frame_.txtVarValue, moment); }
    void checkDefValue(Moment moment) { checkContent(*frame_.txtVarDefValue, moment); }

    /// After a change of format: all markers "0", then every open, non-empty field is judged anew.
    void judgeAnew();

    /// Forgets what belongs to the former edit.
    void beginEdit() { markedAgainstBlank_ = nullptr; }

private:
    void checkLimit(form::Field& left, form::Field& other, Moment moment);
    void checkContent(form::Field& field, Moment moment);
    /// Its format's check is passed, or there is none.
    [[nodiscard]] bool passesOwnCheck(form::Field& field);
    [[nodiscard]] bool isMinAboveMax(const std::string& min, const std::string& max) const;
    void compareLimits(form::Field& left, form::Field& other, Moment moment);
    void compareWithBlank(form::Field& filled);
    /// A 38 that came from a blank limit stays only while it holds.
    void followBlankMark();
    void compareWithLimits(form::Field& field, Moment moment);

    const form::VarFrame& frame_;
    base::ErrorInfo& errors_;
    VariableFormat& format_;
    form::Field* markedAgainstBlank_ = nullptr;  // its 38 came from a blank limit judged as 0
};

}  // namespace stelvan::checks
