#include "checks/record_checks.h"

#include <algorithm>
#include <stdexcept>

#include "form/text.h"
#include "gem/record_captions.h"

namespace stelvan::checks {

RecordChecks::RecordChecks(const form::MainForm& form, base::ErrorInfo& errors, ExceptionBox& box)
    : errors_(errors),
      box_(box),
      variables_(*form.rpt.variables.selected),
      variable_(listed(form, gem::kVariableCaptions)),
      report_(listed(form, gem::kReportCaptions)),
      event_(listed(form, gem::kEventCaptions)),
      alarm_(listed(form, gem::kAlarmCaptions)) {}

std::vector<RecordChecks::Listed> RecordChecks::listed(
    const form::MainForm& form, std::span<const gem::FieldCaption> captions) {
    const QList<form::Field*> fields = form.fields();
    std::vector<Listed> rows;
    for (const gem::FieldCaption& row : captions) {
        const QString name = form::toQt(row.field);
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const form::Field* f) {
            return f->widget()->objectName() == name;
        });
        if (field == fields.end()) throw std::logic_error("no such field: " + name.toStdString());
        rows.push_back({*field, form::toQt(row.caption)});
    }
    return rows;
}

bool RecordChecks::verify(const char* procedure, const std::vector<Listed>& fields,
                          bool needsItems) {
    // Outside the trap: a failure must leave what was found before it.
    bool valid = true;
    errors_.trap(procedure, [&] {
        box_.clear();
        for (const Listed& row : fields) {
            if (!row.field->hasException()) continue;
            box_.logMarker(row.caption, row.field->marker());
            valid = false;
        }
        if (needsItems && variables_.rowCount() == 0) {
            box_.lLogError(form::toQt(gem::kReportListCaption), form::toQt(gem::kMustContainItem));
            valid = false;
        }
    });
    return valid;
}

bool RecordChecks::lVerifyVar() {
    return verify("lVerifyVar", variable_, false);
}
bool RecordChecks::lVerifyRpt() {
    return verify("lVerifyRpt", report_, true);
}
bool RecordChecks::lVerifyEvt() {
    return verify("lVerifyEvt", event_, false);
}
bool RecordChecks::lVerifyAlm() {
    return verify("lVerifyAlm", alarm_, false);
}

}  // namespace stelvan::checks
