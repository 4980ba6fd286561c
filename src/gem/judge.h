// The rules of a record, field by field. Each sets the fault of the field it judges, and of those
// that stand or fall with it; a fault that nothing touches stays.
//
// A number that its type cannot hold is no fault but an overflow, RunTimeError 6: the field keeps
// the fault it had. What failed while the database was asked flies on the same way.
#pragma once

#include <string>
#include <string_view>

#include "gem/record.h"

namespace stelvan::gem {

/// When a field is judged. At the save a blank limit counts as the 0 that will be stored.
enum class Moment { Leaving, Saving };

/// What a record must know of the others.
class Others {
public:
    virtual ~Others() = default;
    /// Whether a record of this kind has the identifier or name (trimmed; names without regard to
    /// letter case). Throws RunTimeError where that cannot be told.
    [[nodiscard]] virtual bool idExists(Kind kind, const std::string& id) = 0;
    [[nodiscard]] virtual bool nameExists(Kind kind, const std::string& name) = 0;
};

/// Judges one field by its check (FieldFacts::check). A closed field is always valid: what the user
/// cannot change is not judged. Settings have judges of their own (settings.h).
void judge(Record& record, Control field, Moment moment, Others& others);

/// Sets the fault of one of the four value fields by a format alone; true when there is none
/// afterwards. Nothing is set for an empty text, nor by a format without a check.
bool lVarVerifyValue(Record& record, Control field, std::string_view format);

/// Minimum and maximum: each by its format, then value and default value against it, then the two
/// against each other.
void judgeLimit(Record& record, Control limit, Moment moment);
/// Value and default value: by its format, then against the limits.
void judgeContent(Record& record, Control content, Moment moment);
/// After a change of format: all five fields that depend on it are released, then every open one
/// that is not empty is judged anew.
void judgeAnew(Record& record);

/// Set and clear event of an alarm: by itself, then against the other side, from which it must
/// differ. An empty field keeps its fault.
void judgeAlarmEvent(Record& record, Control field);
/// These fields may stay empty: before a save an empty one must not hold a fault.
void releaseEmptyAlarmEvents(Record& record);

}  // namespace stelvan::gem
