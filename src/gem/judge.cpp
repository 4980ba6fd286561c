#include "gem/judge.h"

#include "base/text.h"
#include "gem/formats.h"
#include "gem/ids_and_names.h"
#include "gem/kinds.h"

namespace stelvan::gem {
namespace {

ErrorCode judgedId(const Record& record, const std::string& text, Others& others) {
    const ErrorCode fault = checkId(text, rulesOf(record.kind()));
    if (fault != NO_EXCEPTION || !record.adding) return fault;
    return others.idExists(record.kind(), std::string(base::trimBlanks(text))) ? ID_EXIST
                                                                               : NO_EXCEPTION;
}

ErrorCode judgedName(const Record& record, const std::string& text, Others& others) {
    const ErrorCode fault = checkName(text);
    if (fault != NO_EXCEPTION) return fault;
    const bool itsOwn = !record.adding && sameName(text, record.loadedName);
    if (itsOwn) return NO_EXCEPTION;
    return others.nameExists(record.kind(), std::string(base::trimBlanks(text))) ? NAME_EXIST
                                                                                 : NO_EXCEPTION;
}

ErrorCode judgedFormat(const Record& record, const std::string& text) {
    if (text.empty()) return NULL_STRING;
    const bool listInList = record.childOfList && isList(text);
    return record.formatKnown && !listInList ? NO_EXCEPTION : VAR_INVALID_FORMAT;
}

}  // namespace

void judge(Record& record, Control field, Moment moment, Others& others) {
    FieldState& state = record[field];
    if (!state.open) {
        state.fault = NO_EXCEPTION;
        return;
    }
    switch (factsOf(field).check) {
        case Check::AlwaysValid:
            state.fault = NO_EXCEPTION;
            break;
        case Check::Id:
            state.fault = judgedId(record, state.text, others);
            break;
        case Check::Name:
            state.fault = judgedName(record, state.text, others);
            break;
        case Check::Group:
            state.fault = checkGroup(state.text);
            break;
        case Check::Text:
            state.fault = checkText(state.text);
            break;
        case Check::Format:
            state.fault = judgedFormat(record, state.text);
            break;
        case Check::Minimum:
        case Check::Maximum:
            judgeLimit(record, field, moment);
            break;
        case Check::Content:
            judgeContent(record, field, moment);
            break;
        case Check::EventId:
        case Check::EventName:
            judgeAlarmEvent(record, field);
            break;
        case Check::Setting:
        case Check::None:
            break;
    }
}

}  // namespace stelvan::gem
