#include "checks/variable_format.h"

#include "form/text.h"
#include "gem/formats.h"
#include "gem/schema.h"

namespace stelvan::checks {

using form::Field;

namespace {

using enum gem::Control;

}  // namespace

VariableFormat::VariableFormat(form::Window& window, RecordFields& fields, RecordChecks& records)
    : window_(window), fields_(fields), records_(records) {}

void VariableFormat::lLoadVarFormat(std::int16_t kind) {
    base::trap("lLoadVarFormat", [&] {
        QStringList entries;
        for (const std::string_view format : gem::formatsOffered(kind))
            entries << form::toQt(format);
        window_.form[cmbVarFormat].setEntries(entries);
    });
}

void VariableFormat::lVarCheckFormat() {
    if (!window_.state.editing()) return;
    base::trap("lVarCheckFormat", [&] {
        fields_.judge(cmbVarFormat, gem::Moment::Leaving);
        records_.lVerifyVar();
    });
}

bool VariableFormat::lVarVerifyValue(gem::Control field, const QString& format) {
    bool valid = false;
    fields_.apply([&](gem::Record& record) {
        valid = gem::lVarVerifyValue(record, field, form::toUtf8(format));
    });
    return valid;
}

void VariableFormat::lVarSetFormatRight() {
    if (!window_.state.editing()) return;
    base::trap("lVarSetFormatRight", [&] {
        const std::string chosen = fields_.read().format();
        const gem::OpenedFields opened =
            lCheckFormat(form::toQt(chosen)) ? gem::openedBy(chosen) : gem::OpenedFields{};
        for (const gem::Control control : gem::kByFormat) {
            Field& field = window_.form[control];
            gem::opens(opened, control) ? open(field) : close(field, opened.emptiesClosed);
        }
        showChildEditor(opened.emptiesClosed && gem::isList(chosen));
    });
}

void VariableFormat::judgeAnew() {
    fields_.apply([](gem::Record& record) { gem::judgeAnew(record); });
}

void VariableFormat::open(Field& field) {
    field.setEnabled(true);
    field.setColour(form::Colour::ToolTipBackground);
    const QString emptied = emptied_.take(&field);
    if (!emptied.isEmpty() && field.text().isEmpty()) field.setText(emptied);
}

void VariableFormat::close(Field& field, bool empty) {
    field.setEnabled(false);
    field.setColour(form::Colour::WindowBackground);
    // Its old fault could no longer be mended.
    field.setMarker(QStringLiteral("0"));
    if (!empty || field.text().isEmpty()) return;
    emptied_.insert(&field, field.text());
    field.setText(QString());
}

void VariableFormat::closeDependents() {
    for (const gem::Control control : gem::kByFormat) {
        Field& field = window_.form[control];
        field.setEnabled(false);
        field.setColour(form::Colour::WindowBackground);
        field.setText(QString());
    }
}

void VariableFormat::adoptSpelling() {
    Field& box = window_.form[cmbVarFormat];
    const QString text = box.text();
    if (!box.isOpen() || form::toUtf8(text) == fields_.stored(gem::schema::variable::kFormat))
        return;
    const QString wanted = form::toQt(fields_.read().format());
    if (box.entries().contains(wanted)) box.setText(wanted);
}

}  // namespace stelvan::checks
