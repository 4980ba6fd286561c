#include "checks/variable_format.h"

#include "base/number.h"
#include "db/value_text.h"
#include "form/fixed_lists.h"
#include "form/text.h"
#include "gem/formats.h"

namespace stelvan::checks {

using form::Field;

namespace {

constexpr auto kListFormat = "L";

/// Which of the five fields a format opens; the others are closed, and emptied unless the format is
/// none.
struct Opened {
    bool limits, unit, values, emptiesClosed;
};

Opened openedBy(const std::string& code, bool known) {
    if (!known || code.empty()) return {false, false, false, false};
    if (code == kListFormat) return {false, false, false, true};
    if (code == "A" || code == "BL") return {false, false, true, true};
    if (code == "B") return {true, false, true, true};
    return {true, true, true, true};
}

}  // namespace

VariableFormat::VariableFormat(const form::VarFrame& frame, form::MainState& state,
                               RecordChecks& records)
    : frame_(frame),
      state_(state),
      records_(records),
      dependents_{frame.txtVarMax, frame.txtVarMin, frame.txtVarUnit, frame.txtVarDefValue,
                  frame.txtVarValue} {}

void VariableFormat::lLoadVarFormat(std::int16_t kind) {
    records_.errors().trap("lLoadVarFormat", [&] {
        QStringList entries;
        if (form::isCustomVariable(kind)) {
            entries << QString();
            for (const std::string_view format : form::kSecsFormats) {
                if (kind != form::CSTVEC || format != kListFormat) entries << form::toQt(format);
            }
        }
        frame_.cmbVarFormat->setEntries(entries);
    });
}

bool VariableFormat::lCheckFormat(const QString& format) {
    bool known = false;
    records_.errors().trap("lCheckFormat", [&] {
        const QString wanted = format.toUpper();
        for (const QString& entry : frame_.cmbVarFormat->entries()) {
            if (entry.toUpper() == wanted) {
                known = true;
                return;
            }
        }
    });
    return known;
}

void VariableFormat::lVarCheckFormat() {
    if (!state_.editing()) return;
    records_.errors().trap("lVarCheckFormat", [&] {
        Field& box = *frame_.cmbVarFormat;
        gem::ErrorCode fault = gem::NO_EXCEPTION;
        if (box.isOpen()) {
            const QString text = box.text();
            const bool known = lCheckFormat(text);
            if (text.isEmpty()) {
                fault = gem::NULL_STRING;
            } else if (!known || (code() == QLatin1String(kListFormat) && isChildOfList())) {
                fault = gem::VAR_INVALID_FORMAT;
            }
        }
        box.setMarker(QString::number(fault));
        records_.lVerifyVar();
    });
}

bool VariableFormat::lVarVerifyValue(Field& field, const QString& format) {
    bool valid = false;
    records_.errors().trap("lVarVerifyValue", [&] {
        if (const auto fault = gem::checkValue(form::toUtf8(field.text()), form::toUtf8(format))) {
            field.setMarker(QString::number(*fault));
        }
        valid = !field.hasException();
    });
    return valid;
}

void VariableFormat::lVarSetFormatRight() {
    if (!state_.editing()) return;
    records_.errors().trap("lVarSetFormatRight", [&] {
        const QString chosen = code();
        const bool known = lCheckFormat(chosen);
        const Opened opened = openedBy(form::toUtf8(chosen), known);
        const auto set = [&](Field& field, bool isOpened) {
            isOpened ? open(field) : close(field, opened.emptiesClosed);
        };
        set(*frame_.txtVarMax, opened.limits);
        set(*frame_.txtVarMin, opened.limits);
        set(*frame_.txtVarUnit, opened.unit);
        set(*frame_.txtVarDefValue, opened.values);
        set(*frame_.txtVarValue, opened.values);
        showChildEditor(known && chosen == QLatin1String(kListFormat));
    });
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

QString VariableFormat::code() const {
    return form::toQt(gem::formatCode(form::toUtf8(frame_.cmbVarFormat->text())));
}

void VariableFormat::adoptSpelling() {
    Field& box = *frame_.cmbVarFormat;
    const QString text = box.text();
    if (!box.isOpen() || text == stored("var_format")) return;
    const QString wanted = code();
    const QStringList entries = box.entries();
    if (entries.contains(wanted)) box.setText(wanted);
}

QString VariableFormat::stored(const char* column) const {
    if (state_.editMode != form::EditMode::Editing || !state_.current.onRecord()) return {};
    return form::toQt(db::toTextOrEmpty(state_.current.records->field(column)));
}

bool VariableFormat::isChildOfList() const {
    const std::string parent = form::toUtf8(stored("var_parentkey"));
    return base::isNumeric(parent) && base::toDouble(parent) != 0;
}

}  // namespace stelvan::checks
