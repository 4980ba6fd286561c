// Identifier and name of an alarm's set or clear event fill each other in from the events that the
// database holds.
#pragma once

#include <functional>
#include <string>

#include "checks/record_fields.h"

namespace stelvan::checks {

class AlarmLinks {
public:
    /// Both must outlive the object.
    AlarmLinks(form::Window& window, RecordFields& fields) : window_(window), fields_(fields) {}

    /// Fills an empty partner (name for an identifier, identifier for a name) from the custom
    /// events, then the GEM events, and judges it. Only when `left` is valid; nothing typed is
    /// overwritten. Throws RunTimeError where the events could not be asked.
    void fillPartner(gem::Control left);

private:
    using Accepts = std::function<bool(const std::string&)>;
    [[nodiscard]] std::string eventName(const std::string& id) const;
    [[nodiscard]] std::string eventId(const std::string& name) const;
    /// The first value of a one-column query that `accepts` takes; empty when there is none.
    [[nodiscard]] std::string firstValue(const std::string& sql, const Accepts& accepts) const;

    form::Window& window_;
    RecordFields& fields_;
};

}  // namespace stelvan::checks
