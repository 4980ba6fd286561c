// The two collection events of an alarm: identifier and name of the event that sets it and of the
// one that clears it. The two sides must differ, and identifier and name of one side fill each
// other in.
//
// Checks set markers only; the trap and the verification belong to the handler that calls them.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "db/operations.h"
#include "form/frames.h"

namespace stelvan::checks {

class AlarmLinks {
public:
    AlarmLinks(const form::AlmFrame& frame, db::Operations& database);

    /// An empty field keeps its marker. Equal identifiers (names) mark both sides; otherwise both
    /// are released together.
    void judge(form::Field& left);

    /// Fills an empty partner (name for an identifier, identifier for a name) from the custom
    /// events, then the GEM events, and checks it. Only when `left` is valid; nothing typed is
    /// overwritten.
    void fillPartner(form::Field& left);

    /// These fields may stay empty: before a save an empty one must not hold a fault.
    void releaseEmpty();

private:
    struct Entry;
    [[nodiscard]] Entry entryOf(const form::Field& field) const;
    [[nodiscard]] QString eventName(const std::string& id);
    [[nodiscard]] QString eventId(const std::string& name);
    [[nodiscard]] QString lookUp(const std::string& wanted, const std::string& condition,
                                 const std::function<bool(const std::string&)>& accepts);

    const form::AlmFrame& frame_;
    db::Operations& database_;
};

}  // namespace stelvan::checks
