#include "checks/record_checks.h"

#include "form/text.h"
#include "gem/kinds.h"
#include "gem/links.h"

namespace stelvan::checks {

bool RecordChecks::verify(gem::Kind kind) {
    return base::trap(gem::factsOf(kind).verify, [&] {
        box_.clear();
        bool valid = true;
        for (const gem::FieldFacts* facts : gem::inOrder(kind, &gem::Places::verified)) {
            const form::Field& field = form_[facts->control];
            if (!field.hasException()) continue;
            box_.logMarker(form::toQt(facts->caption), field.marker(), field.widget());
            valid = false;
        }
        if (kind == gem::Kind::Report) valid = verifyList() && valid;
        return valid;
    });
}

bool RecordChecks::verifyList() {
    form::ListView& list = *form_.variables.selected;
    const QString message = form::toQt(gem::kMustContainItem);
    const bool filled = list.rowCount() > 0;
    list.setFault(filled ? QString() : message);
    if (!filled) box_.lLogError(form::toQt(gem::kReportListCaption), message, &list);
    return filled;
}

}  // namespace stelvan::checks
