#include <exception>

#include "base/number.h"
#include "base/run_time_error.h"
#include "base/text.h"
#include "gem/formats.h"
#include "gem/judge.h"

namespace stelvan::gem {
namespace {

using enum Control;

constexpr Control kContents[] = {txtVarDefValue, txtVarValue};

/// Runs several steps although one of them fails, and then lets the first failure fly on.
class Steps {
public:
    template <class Step>
    void run(const Step& step) {
        try {
            step();
        } catch (const base::RunTimeError&) {
            if (first_ == nullptr) first_ = std::current_exception();
        }
    }
    void end() const {
        if (first_ != nullptr) std::rethrow_exception(first_);
    }

private:
    std::exception_ptr first_;
};

bool holdsNothing(const Record& record, Control field) {
    return base::isBlank(record[field].text);
}

Control otherLimit(Control limit) {
    return limit == txtVarMin ? txtVarMax : txtVarMin;
}

/// Its format's check is passed, or there is none.
bool passesOwnCheck(Record& record, Control field) {
    const std::string format = record.format();
    return lVarVerifyValue(record, field, format) || valueKindOf(format) == ValueKind::Unchecked;
}

/// The other limit is blank and will be stored as 0.
void compareWithBlank(Record& record, Control filled) {
    const std::string& limit = record[filled].text;
    if (!base::isNumeric(limit)) return;
    const std::string format = record.format();
    const bool above =
        filled == txtVarMin ? minAboveMax(limit, "0", format) : minAboveMax("0", limit, format);
    record[filled].fault = above ? VAR_MIN_GT_MAX : NO_EXCEPTION;
    record.judgedAgainstBlank = above ? filled : None;
}

/// A fault that came from a blank limit stays only while it holds.
void followBlank(Record& record) {
    const Control filled = record.judgedAgainstBlank;
    if (filled == None) return;
    record.judgedAgainstBlank = None;
    FieldState& state = record[filled];
    // Leaving a field takes its old fault away when its own check passes; another one says more.
    if (state.fault != NO_EXCEPTION && state.fault != VAR_MIN_GT_MAX) return;
    state.fault = NO_EXCEPTION;
    if (!holdsNothing(record, filled) && holdsNothing(record, otherLimit(filled)))
        compareWithBlank(record, filled);
}

void compareLimits(Record& record, Control left, Moment moment) {
    const Control right = otherLimit(left);
    if (!isNumericFormat(record.format()) || holdsNothing(record, left)) return;
    if (holdsNothing(record, right)) {
        if (moment == Moment::Saving) compareWithBlank(record, left);
        return;
    }
    const std::string& min = record[txtVarMin].text;
    const std::string& max = record[txtVarMax].text;
    if (!base::isNumeric(min) || !base::isNumeric(max)) return;
    ErrorCode& other = record[right].fault;
    if (minAboveMax(min, max, record.format())) {
        record[left].fault = VAR_MIN_GT_MAX;
        if (other == NO_EXCEPTION) other = VAR_MIN_GT_MAX;
    } else {
        record[left].fault = NO_EXCEPTION;
        if (other == VAR_MIN_GT_MAX) other = NO_EXCEPTION;
    }
}

void compareWithLimits(Record& record, Control content, Moment moment) {
    if (!isNumericFormat(record.format()) || holdsNothing(record, content)) return;
    std::string min = record[txtVarMin].text;
    std::string max = record[txtVarMax].text;
    // Limits that cannot be changed are not written either, so a blank one of theirs stays blank.
    const bool blankIsZero = moment == Moment::Saving && record[txtVarMin].open;
    if (blankIsZero && base::isBlank(min) != base::isBlank(max))
        (base::isBlank(min) ? min : max) = "0";
    FieldState& state = record[content];
    if (outsideLimits(state.text, min, max)) {
        state.fault = VAR_NOT_IN_MINMAX;
    } else if (state.fault == VAR_NOT_IN_MINMAX) {
        state.fault = NO_EXCEPTION;
    }
}

}  // namespace

bool lVarVerifyValue(Record& record, Control field, std::string_view format) {
    return base::trap("lVarVerifyValue", [&] {
        FieldState& state = record[field];
        state.fault = checkValue(state.text, format).value_or(state.fault);
        return state.fault == NO_EXCEPTION;
    });
}

void judgeLimit(Record& record, Control limit, Moment moment) {
    const bool passed = passesOwnCheck(record, limit);
    followBlank(record);
    for (const Control content : kContents) {
        const ErrorCode fault = record[content].fault;
        if (fault == NO_EXCEPTION || fault == VAR_NOT_IN_MINMAX)
            compareWithLimits(record, content, moment);
    }
    // Last: comparing limits beyond 32 bits fails, and must not keep the rest from being judged.
    if (passed) compareLimits(record, limit, moment);
}

void judgeContent(Record& record, Control content, Moment moment) {
    if (passesOwnCheck(record, content)) compareWithLimits(record, content, moment);
}

void judgeAnew(Record& record) {
    record.judgedAgainstBlank = None;
    for (const Control field : kByFormat) record[field].fault = NO_EXCEPTION;
    Steps steps;
    int passed = 0;
    for (const Control limit : {txtVarMin, txtVarMax})
        steps.run([&] { passed += record[limit].open && passesOwnCheck(record, limit) ? 1 : 0; });
    for (const Control content : kContents)
        if (record[content].open)
            steps.run([&] { judgeContent(record, content, Moment::Leaving); });
    if (passed == 2) steps.run([&] { compareLimits(record, txtVarMin, Moment::Leaving); });
    steps.end();
}

}  // namespace stelvan::gem
