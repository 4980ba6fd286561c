#include "checks/value_checks.h"

#include "base/number.h"
#include "checks/field_text.h"
#include "gem/formats.h"

namespace stelvan::checks {

using form::Field;

ValueChecks::ValueChecks(const form::VarFrame& frame, base::ErrorInfo& errors,
                         VariableFormat& format)
    : frame_(frame), errors_(errors), format_(format) {}

void ValueChecks::checkLimit(Field& left, Field& other, Moment moment) {
    if (!left.isOpen()) return mark(left, gem::NO_EXCEPTION);
    const base::FailureWatch watch(errors_);
    const bool passed = passesOwnCheck(left);
    if (watch.failed()) return;
    followBlankMark();
    if (passed) compareLimits(left, other, moment);
    for (Field* content : {frame_.txtVarDefValue, frame_.txtVarValue}) {
        if (isMarked(*content, gem::NO_EXCEPTION) || isMarked(*content, gem::VAR_NOT_IN_MINMAX)) {
            compareWithLimits(*content, moment);
        }
    }
}

void ValueChecks::checkContent(Field& field, Moment moment) {
    if (!field.isOpen()) return mark(field, gem::NO_EXCEPTION);
    const base::FailureWatch watch(errors_);
    const bool passed = passesOwnCheck(field);
    if (!watch.failed() && passed) compareWithLimits(field, moment);
}

bool ValueChecks::passesOwnCheck(Field& field) {
    const QString code = format_.code();
    const bool valid = format_.lVarVerifyValue(field, code);
    return valid || gem::kindOf(form::toUtf8(code)) == gem::ValueKind::Unchecked;
}

bool ValueChecks::isMinAboveMax(const std::string& min, const std::string& max) const {
    return gem::minAboveMax(min, max, form::toUtf8(format_.code()));
}

void ValueChecks::compareLimits(Field& left, Field& other, Moment moment) {
    if (!gem::isNumericFormat(form::toUtf8(format_.code())) || holdsNothing(left)) return;
    if (holdsNothing(other)) {
        if (moment == Moment::Saving) compareWithBlank(left);
        return;
    }
    const std::string min = textOf(*frame_.txtVarMin);
    const std::string max = textOf(*frame_.txtVarMax);
    if (!base::isNumeric(min) || !base::isNumeric(max)) return;
    if (isMinAboveMax(min, max)) {
        mark(left, gem::VAR_MIN_GT_MAX);
        if (!other.hasException()) mark(other, gem::VAR_MIN_GT_MAX);
    } else {
        mark(left, gem::NO_EXCEPTION);
        if (isMarked(other, gem::VAR_MIN_GT_MAX)) mark(other, gem::NO_EXCEPTION);
    }
}

void ValueChecks::compareWithBlank(Field& filled) {
    const std::string limit = textOf(filled);
    if (!base::isNumeric(limit)) return;
    const bool above =
        &filled == frame_.txtVarMin ? isMinAboveMax(limit, "0") : isMinAboveMax("0", limit);
    mark(filled, above ? gem::VAR_MIN_GT_MAX : gem::NO_EXCEPTION);
    markedAgainstBlank_ = above ? &filled : nullptr;
}

void ValueChecks::followBlankMark() {
    if (markedAgainstBlank_ == nullptr) return;
    Field& filled = *markedAgainstBlank_;
    const Field& blank = &filled == frame_.txtVarMin ? *frame_.txtVarMax : *frame_.txtVarMin;
    markedAgainstBlank_ = nullptr;
    // Leaving a field takes its old mark away when its own check passes; another fault says more
    // than this.
    if (!isMarked(filled, gem::NO_EXCEPTION) && !isMarked(filled, gem::VAR_MIN_GT_MAX)) return;
    mark(filled, gem::NO_EXCEPTION);
    if (!holdsNothing(filled) && holdsNothing(blank)) compareWithBlank(filled);
}

void ValueChecks::compareWithLimits(Field& field, Moment moment) {
    if (!gem::isNumericFormat(form::toUtf8(format_.code())) || holdsNothing(field)) return;
    std::string min = textOf(*frame_.txtVarMin);
    std::string max = textOf(*frame_.txtVarMax);
    // Limits that cannot be changed are not written either, so a blank one of theirs stays what it
    // is.
    const bool blankIsZero = moment == Moment::Saving && frame_.txtVarMin->isOpen();
    if (blankIsZero && base::isBlank(min) != base::isBlank(max))
        (base::isBlank(min) ? min : max) = "0";
    if (gem::outsideLimits(textOf(field), min, max)) {
        mark(field, gem::VAR_NOT_IN_MINMAX);
    } else if (isMarked(field, gem::VAR_NOT_IN_MINMAX)) {
        mark(field, gem::NO_EXCEPTION);
    }
}

void ValueChecks::judgeAnew() {
    markedAgainstBlank_ = nullptr;
    Field& min = *frame_.txtVarMin;
    Field& max = *frame_.txtVarMax;
    for (Field* field : format_.dependents()) mark(*field, gem::NO_EXCEPTION);
    bool comparable = true;
    for (Field* limit : {&min, &max})
        comparable = (limit->isOpen() && passesOwnCheck(*limit)) && comparable;
    for (Field* content : {frame_.txtVarDefValue, frame_.txtVarValue})
        checkContent(*content, Moment::Leaving);
    // Last: comparing U8 and I8 limits beyond 32 bits fails, and must not keep the rest from being
    // judged.
    if (comparable) compareLimits(min, max, Moment::Leaving);
}

}  // namespace stelvan::checks
