#include "checks/field_checks.h"

#include <QGuiApplication>
#include <QPushButton>
#include <QTimer>

#include "base/number.h"
#include "base/text.h"
#include "checks/checks.h"
#include "form/text.h"
#include "gem/formats.h"

namespace stelvan::checks {

using form::Field;

namespace {

using enum gem::Control;

constexpr gem::Kind kChecked[] = {gem::Kind::Variable, gem::Kind::Alarm, gem::Kind::CollectionEvent,
                                  gem::Kind::Report};

bool isAlarmEvent(const gem::FieldFacts& facts) {
    return facts.check == gem::Check::EventId || facts.check == gem::Check::EventName;
}

bool isLimit(const gem::FieldFacts& facts) {
    return facts.check == gem::Check::Minimum || facts.check == gem::Check::Maximum;
}

}  // namespace

FieldChecks::FieldChecks(form::Window& window, Checks& checks) : window_(window), checks_(checks) {}

void FieldChecks::connectFields() {
    for (const gem::Kind kind : kChecked)
        for (const gem::FieldFacts& facts : gem::fieldsOf(kind))
            if (facts.at.verified > 0 && facts.check != gem::Check::Format) connectField(facts);
    connectFormat();
    Field* const ceid = &window_.form[txtVarLmtCEID];
    QObject::connect(ceid, &Field::lostFocus, ceid, [this] {
        if (txtVarLmtCEID_Validate()) txtVarLmtCEID_LostFocus();
    });
}

void FieldChecks::connectField(const gem::FieldFacts& facts) {
    Field* const field = &window_.form[facts.control];
    QObject::connect(field, &Field::lostFocus, field, [this, &facts] { leave(facts); });
    QObject::connect(field, &Field::changed, field, [this, &facts] { noteChange(facts); });
}

void FieldChecks::connectFormat() {
    Field* const format = &window_.form[cmbVarFormat];
    QObject::connect(format, &Field::changed, format, [this] { cmbVarFormat_Change(); });
    QObject::connect(format, &Field::chosen, format, [this] { cmbVarFormat_Click(); });
    QObject::connect(format, &Field::lostFocus, format, [this] { cmbVarFormat_LostFocus(); });
}

void FieldChecks::beginEdit() {
    changed_.clear();
    lastFormat_ = window_.form[cmbVarFormat].text();
    checks_.format.beginEdit();
    checks_.recordFields.beginEdit();
}

void FieldChecks::leave(const gem::FieldFacts& facts) {
    if (!window_.judging()) return;
    window_.errors.handle(gem::lostFocusNameOf(facts), [&] {
        checks_.recordFields.judge(facts.control, gem::Moment::Leaving);
        const bool changed = changed_.remove(facts.control);
        if (changed && isAlarmEvent(facts)) checks_.alarmLinks.fillPartner(facts.control);
        // The pool of a list could not be filled without the list's own identifier.
        if (changed && facts.control == txtVarID &&
            gem::isList(form::toUtf8(window_.form[cmbVarFormat].text())))
            checks_.format.showChildEditor(true);
        checks_.records.verify(gem::kindOf(window_.state.category));
    });
}

void FieldChecks::noteChange(const gem::FieldFacts& facts) {
    window_.errors.handle(gem::changeNameOf(facts), [&] { changed_.insert(facts.control); });
}

void FieldChecks::followFormat(const char* procedure) {
    const Field& box = window_.form[cmbVarFormat];
    if (!window_.judging() || !box.isOpen() || box.text() == lastFormat_) return;
    window_.errors.handle(procedure, [&] {
        const std::string before = gem::formatCode(form::toUtf8(lastFormat_));
        lastFormat_ = box.text();
        if (gem::formatCode(form::toUtf8(box.text())) != before) {
            checks_.format.lVarSetFormatRight();
            // A limit that cannot be compared must not keep the format from being judged.
            window_.errors.handle(procedure, [&] { checks_.format.judgeAnew(); });
        }
        checks_.format.lVarCheckFormat();
    });
}

void FieldChecks::cmbVarFormat_LostFocus() {
    if (!window_.judging()) return;
    window_.errors.handle("cmbVarFormat_LostFocus", [&] { checks_.format.adoptSpelling(); });
    followFormat("cmbVarFormat_LostFocus");
}

bool FieldChecks::txtVarLmtCEID_Validate() {
    bool valid = true;
    window_.errors.handle("txtVarLmtCEID_Validate", [&] {
        Field& field = window_.form[txtVarLmtCEID];
        const std::string text = form::toUtf8(field.text());
        if (!window_.judging() || !field.isOpen() || base::isBlank(text) || base::isNumeric(text))
            return;
        valid = false;
        checks_.box.lReportError(QStringLiteral("Invalid value. Must be an integer."));
        field.setFocus();
    });
    return valid;
}

void FieldChecks::txtVarLmtCEID_LostFocus() {
    // A button loses its press together with the focus, so the focus waits until the mouse is let
    // go.
    QPushButton* const cmdUpdate = window_.form.nav.cmdUpdate;
    QTimer::singleShot(0, cmdUpdate, [this, cmdUpdate] {
        if (QGuiApplication::mouseButtons() != Qt::NoButton) return txtVarLmtCEID_LostFocus();
        window_.errors.handle("txtVarLmtCEID_LostFocus", [&] {
            if (cmdUpdate->isEnabled()) cmdUpdate->setFocus(Qt::OtherFocusReason);
        });
    });
}

bool FieldChecks::checkForSave(std::int16_t category) {
    const gem::Kind kind = gem::kindOf(category);
    if (kind == gem::Kind::Alarm)
        checks_.recordFields.apply([](gem::Record& r) { gem::releaseEmptyAlarmEvents(r); });
    bool judged = true;
    for (const gem::FieldFacts* facts : gem::inOrder(kind, &gem::Places::judged))
        judged = judgeForSave(*facts) && judged;
    return checks_.records.verify(kind) && judged;
}

bool FieldChecks::judgeForSave(const gem::FieldFacts& facts) {
    if (facts.check == gem::Check::Format) {
        return window_.errors.handle("cmbVarFormat_LostFocus", [&] {
            checks_.format.adoptSpelling();
            checks_.format.lVarCheckFormat();
        });
    }
    const bool judged = window_.errors.handle(gem::lostFocusNameOf(facts), [&] {
        checks_.recordFields.judge(facts.control, gem::Moment::Saving);
    });
    // Limits of these formats may be beyond 32 bits although their comparison then fails; nothing
    // else of them can.
    const std::string format = checks_.recordFields.read().format();
    const bool mayBeTooLarge =
        isLimit(facts) && gem::valueKindOf(format) == gem::ValueKind::Unchecked;
    return judged || mayBeTooLarge;
}

}  // namespace stelvan::checks
