#include "db/value_text.h"

#include "jet/conversion.h"
#include "jet/value_text.h"
#include "validation/reporting/run_time_error.h"

namespace stelvan::db {

std::string toText(const Value& value) {
    if (jet::isNull(value)) throw invalidUseOfNull();
    return jet::textOf(value);
}

std::string toTextOrEmpty(const Value& value) {
    return jet::textOf(value);
}

bool toFlag(const Value& value) {
    if (jet::isNull(value)) throw invalidUseOfNull();
    const std::optional<bool> flag = jet::flagOf(value);
    if (!flag) throw typeMismatch();
    return *flag;
}

bool toFlagOrClear(const Value& value) {
    return !jet::isNull(value) && toFlag(value);
}

}  // namespace stelvan::db
