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
            box_.logMarker(form::toQt(facts->caption), field.marker());
            valid = false;
        }
        if (kind == gem::Kind::Report && form_.variables.selected->rowCount() == 0) {
            box_.lLogError(form::toQt(gem::kReportListCaption), form::toQt(gem::kMustContainItem));
            valid = false;
        }
        return valid;
    });
}

}  // namespace stelvan::checks
