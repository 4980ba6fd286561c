#include "validation/record_checks.h"

#include <algorithm>
#include <stdexcept>

#include "app/form/text.h"
#include "validation/rules/record_captions.h"

namespace stelvan::validation {

RecordChecks::RecordChecks(const form::MainForm& form, ErrorInfo& errors, ExceptionBox& box)
    : errors_(errors),
      box_(box),
      variables_(*form.rpt.variables.selected),
      variable_(listed(form, kVariableCaptions)),
      report_(listed(form, kReportCaptions)),
      event_(listed(form, kEventCaptions)),
      alarm_(listed(form, kAlarmCaptions)) {}

std::vector<RecordChecks::Listed> RecordChecks::listed(const form::MainForm& form,
                                                       std::span<const FieldCaption> captions) {
    const QList<form::Field*> fields = form.fields();
    std::vector<Listed> rows;
    for (const FieldCaption& row : captions) {
        const QString name = form::toQt(row.field);
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const form::Field* f) {
            return f->widget()->objectName() == name;
        });
        if (field == fields.end()) throw std::logic_error("no such field: " + name.toStdString());
        rows.push_back({*field, form::toQt(row.caption)});
    }
    return rows;
}

bool RecordChecks::verify(const char* procedure, const std::vector<Listed>& fields, bool needsItems) {
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
            box_.lLogError(form::toQt(kReportListCaption), form::toQt(kMustContainItem));
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

}  // namespace stelvan::validation
