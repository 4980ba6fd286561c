#include "gem/alarms.h"

#include <stdexcept>

#include "base/text.h"
#include "gem/ids_and_names.h"
#include "gem/judge.h"
#include "gem/kinds.h"

namespace stelvan::gem {
namespace {

using enum Control;

constexpr AlarmEventField kFields[] = {
    {txtAlmSetCEID, txtAlmClrCEID, txtAlmSetCEName},
    {txtAlmSetCEName, txtAlmClrCEName, txtAlmSetCEID},
    {txtAlmClrCEID, txtAlmSetCEID, txtAlmClrCEName},
    {txtAlmClrCEName, txtAlmSetCEName, txtAlmClrCEID},
};

}  // namespace

std::span<const AlarmEventField> alarmEventFields() {
    return kFields;
}

const AlarmEventField& alarmEventField(Control field) {
    for (const AlarmEventField& entry : kFields)
        if (entry.field == field) return entry;
    throw std::logic_error("no event of an alarm: " + std::string(nameOf(field)));
}

void judgeAlarmEvent(Record& record, Control field) {
    FieldState& left = record[field];
    if (base::isBlank(left.text)) return;
    const bool isId = factsOf(field).check == Check::EventId;
    const ErrorCode own = isId ? checkCeid(left.text) : checkCeName(left.text);
    if (own != NO_EXCEPTION) {
        left.fault = own;
        return;
    }
    const ErrorCode same = isId ? ALM_SETID_EQ_CLRID : ALM_SETNAME_EQ_CLRNAME;
    FieldState& opposite = record[alarmEventField(field).opposite];
    if (samePair(left.text, opposite.text)) {
        left.fault = opposite.fault = same;
    } else {
        left.fault = NO_EXCEPTION;
        if (opposite.fault == same) opposite.fault = NO_EXCEPTION;
    }
}

void releaseEmptyAlarmEvents(Record& record) {
    for (const AlarmEventField& entry : kFields)
        if (base::isBlank(record[entry.field].text)) record[entry.field].fault = NO_EXCEPTION;
}

}  // namespace stelvan::gem
