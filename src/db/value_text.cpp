#include "db/value_text.h"

#include "base/run_time_error.h"
#include "jet/rows/conversion.h"
#include "jet/rows/value_text.h"

namespace stelvan::db {

std::string toText(const Value& value) {
    if (jet::isNull(value)) throw base::invalidUseOfNull();
    return jet::textOf(value);
}

std::string toTextOrEmpty(const Value& value) {
    return jet::textOf(value);
}

bool toFlag(const Value& value) {
    if (jet::isNull(value)) throw base::invalidUseOfNull();
    const std::optional<bool> flag = jet::flagOf(value);
    if (!flag) throw base::typeMismatch();
    return *flag;
}

bool toFlagOrClear(const Value& value) {
    return !jet::isNull(value) && toFlag(value);
}

}  // namespace stelvan::db
