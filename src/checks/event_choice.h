// The list of collection events that the event fields of an alarm or a limit offer: choosing one
// fills identifier and name.
#pragma once

#include <vector>

#include "checks/record_checks.h"
#include "checks/record_fields.h"
#include "form/pick_list.h"

namespace stelvan::checks {

class EventChoice {
public:
    /// All must outlive the object; `window`'s form stands already.
    EventChoice(form::Window& window, RecordFields& fields, RecordChecks& records);

    /// Connects the fields. Once, when the window is built.
    void connectFields();

    /// The events that an alarm or a limit may name, the equipment's own first: identifier, name.
    /// Throws RunTimeError where they cannot be read.
    [[nodiscard]] std::vector<form::ListRow> events() const;

private:
    struct Fields {
        gem::Control id;
        gem::Control name;
    };
    void connectField(gem::Control field, const Fields& pair);
    void offer(gem::Control field, const Fields& pair);
    void take(const QStringList& event);

    form::Window& window_;
    RecordFields& fields_;
    RecordChecks& records_;
    form::PickList* list_ = nullptr;  // made when it is first wanted
    Fields asking_{};                 // whose list is open
};

}  // namespace stelvan::checks
