#include "checks/field_checks.h"

#include <QGuiApplication>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

#include "base/number.h"
#include "checks/field_text.h"
#include "gem/formats.h"

namespace stelvan::checks {

using form::Field;

namespace {

bool sameName(const std::string& left, const std::string& right) {
    const auto folded = [](const std::string& name) {
        return form::toQt(base::trimBlanks(name)).toCaseFolded();
    };
    return folded(left) == folded(right);
}

}  // namespace

FieldChecks::FieldChecks(const form::MainForm& form, form::MainState& state,
                         db::Operations& database, RecordChecks& records, VariableFormat& format,
                         ValueChecks& values)
    : form_(form),
      state_(state),
      database_(database),
      errors_(records.errors()),
      records_(records),
      format_(format),
      values_(values),
      alarmLinks_(form.alm, database) {
    addVariable();
    addAlarm();
    addEvent();
    addReport();
}

void FieldChecks::add(Verify verify, Field* field, const char* lostFocus, const char* change,
                      Judge judge) {
    checks_.push_back({field, lostFocus, change, std::move(judge), verify});
}

// Some handlers have always reported under a name that is not quite their own; whoever reads
// reports knows them by it.

void FieldChecks::addVariable() {
    const form::VarFrame& var = form_.var;
    add(&RecordChecks::lVerifyVar, var.txtVarName, "txtVarName_LostFocus", "txtVarName_Change",
        [this](Field& f, Moment) { judgeName(f, gem::kVariableRules, state_.loadedVariableName); });
    add(&RecordChecks::lVerifyVar, var.txtVarID, "txtVarID_LostFocus", "txtVarID_Change",
        [this](Field& f, Moment) { judgeId(f, gem::kVariableRules); });
    add(&RecordChecks::lVerifyVar, var.txtVarGroup, "txtVarGroup_LostFocus", "txtVarGroup_Change",
        [](Field& f, Moment) { mark(f, gem::checkGroup(textOf(f))); });
    add(&RecordChecks::lVerifyVar, var.txtVarDesc, "txtVarDesc_LostFocus", "txtVarGroup_Change",
        [](Field& f, Moment) { mark(f, gem::checkText(textOf(f))); });
    add(&RecordChecks::lVerifyVar, var.txtVarMin, "txtVarMin_LostFocus", "txtVarMin_Change",
        [this](Field&, Moment moment) { values_.checkMin(moment); });
    add(&RecordChecks::lVerifyVar, var.txtVarMax, "txtVarMax_LostFocus", "txtVarMax_Change",
        [this](Field&, Moment moment) { values_.checkMax(moment); });
    add(&RecordChecks::lVerifyVar, var.txtVarUnit, "txtVarUnit_LostFocus", "txtVarUnit_Change",
        [](Field& f, Moment) { mark(f, gem::NO_EXCEPTION); });
    add(&RecordChecks::lVerifyVar, var.txtVarDefValue, "txtVarDefValue_LostFocus",
        "txtVarDefValue_Change", [this](Field&, Moment moment) { values_.checkDefValue(moment); });
    add(&RecordChecks::lVerifyVar, var.txtVarValue, "txtVarValue_LostFocus", "txtVarValue_Change",
        [this](Field&, Moment moment) { values_.checkValue(moment); });
}

void FieldChecks::addAlarm() {
    const form::AlmFrame& alm = form_.alm;
    const Judge judgeEvent = [this](Field& f, Moment moment) { judgeAlarmEvent(f, moment); };
    add(&RecordChecks::lVerifyAlm, alm.txtAlmName, "txtAlmName_LostFocus", "txtAlmName_Change",
        [this](Field& f, Moment) { judgeName(f, gem::kAlarmRules, state_.loadedAlarmName); });
    add(&RecordChecks::lVerifyAlm, alm.txtAlmID, "txtAlmID_LostFocus", "txtAlmID_Change",
        [this](Field& f, Moment) { judgeId(f, gem::kAlarmRules); });
    add(&RecordChecks::lVerifyAlm, alm.txtAlmGroup, "txtAlmGroup_LostFocus", "txtAlmGroup_Change",
        [](Field& f, Moment) { mark(f, gem::checkGroup(textOf(f))); });
    add(&RecordChecks::lVerifyAlm, alm.txtAlmText, "txtAlmText_LostFocus", "txtAlmText_Change",
        [](Field& f, Moment) { mark(f, gem::checkText(textOf(f))); });
    add(&RecordChecks::lVerifyAlm, alm.txtAlmSetCEName, "txtAlmSetCEName_LostFocus",
        "txtAlmSetCEName_Change", judgeEvent);
    add(&RecordChecks::lVerifyAlm, alm.txtAlmSetCEID, "txtAlmSetCEID_LostFocus",
        "txtAlmSetCEID_Change", judgeEvent);
    add(&RecordChecks::lVerifyAlm, alm.txtAlmClrCEName, "txtAlmClrCEName_LostFocus",
        "txtAlmClrCEName_Change", judgeEvent);
    add(&RecordChecks::lVerifyAlm, alm.txtAlmClrCEID, "txtAlmClrCEID_lostfocus",
        "txtAlmClrCEID_Change", judgeEvent);
}

void FieldChecks::addEvent() {
    const form::EvtFrame& evt = form_.evt;
    add(&RecordChecks::lVerifyEvt, evt.txtEvtName, "txtEvtName_LostFocus", "txtEvtName_Change",
        [this](Field& f, Moment) { judgeName(f, gem::kEventRules, state_.loadedEventName); });
    add(&RecordChecks::lVerifyEvt, evt.txtEvtID, "txtEvtID_LostFocus", "txtEvtID_Change",
        [this](Field& f, Moment) { judgeId(f, gem::kEventRules); });
    add(&RecordChecks::lVerifyEvt, evt.txtEvtGroup, "txtEvtGroup_LostFocus", "txtEvtGroup_Change",
        [](Field& f, Moment) { mark(f, gem::checkGroup(textOf(f))); });
    add(&RecordChecks::lVerifyEvt, evt.txtEvtDesc, "txtEvtDesc_lostfocus", "txtEvtDesc_Change",
        [](Field& f, Moment) { mark(f, gem::checkText(textOf(f))); });
}

void FieldChecks::addReport() {
    const form::RptFrame& rpt = form_.rpt;
    add(&RecordChecks::lVerifyRpt, rpt.txtRptName, "txtRptName_LostFocus", "txtRptName_Change",
        [this](Field& f, Moment) { judgeName(f, gem::kReportRules, state_.loadedReportName); });
    add(&RecordChecks::lVerifyRpt, rpt.txtRptID, "txtRptID_LostFocus", "txtRptID_Change",
        [this](Field& f, Moment) { judgeId(f, gem::kReportRules); });
    add(&RecordChecks::lVerifyRpt, rpt.txtRptDesc, "txtRptDesc_LostFocus", "txtRptDesc_Change",
        [](Field& f, Moment) { mark(f, gem::checkText(textOf(f))); });
}

const FieldChecks::Check& FieldChecks::checkOf(const Field& field) const {
    const auto found = std::find_if(checks_.begin(), checks_.end(),
                                    [&](const Check& check) { return check.field == &field; });
    if (found == checks_.end()) throw std::logic_error("no check for this field");
    return *found;
}

void FieldChecks::connectFields() {
    for (const Check& check : checks_) {
        Field* const field = check.field;
        QObject::connect(field, &Field::lostFocus, field, [this, field] { leave(*field); });
        QObject::connect(field, &Field::changed, field, [this, field] { noteChange(*field); });
    }
    Field* const format = form_.var.cmbVarFormat;
    QObject::connect(format, &Field::changed, format, [this] { cmbVarFormat_Change(); });
    QObject::connect(format, &Field::chosen, format, [this] { cmbVarFormat_Click(); });
    QObject::connect(format, &Field::lostFocus, format, [this] { cmbVarFormat_LostFocus(); });
    Field* const ceid = form_.var.txtVarLmtCEID;
    QObject::connect(ceid, &Field::lostFocus, ceid, [this] {
        if (txtVarLmtCEID_Validate()) txtVarLmtCEID_LostFocus();
    });
}

void FieldChecks::beginEdit() {
    changed_.clear();
    lastFormat_ = form_.var.cmbVarFormat->text();
    format_.beginEdit();
    values_.beginEdit();
}

void FieldChecks::leave(Field& field) {
    if (!judging()) return;
    const Check& check = checkOf(field);
    errors_.trap(check.lostFocus, [&] {
        const base::FailureWatch watch(errors_);
        judge(check, Moment::Leaving);
        changed_.remove(&field);
        // What failed inside has been reported; the marker is as before, and so is the box.
        if (!watch.failed()) (records_.*check.verify)();
    });
}

void FieldChecks::judge(const Check& check, Moment moment) {
    if (check.field->isOpen()) {
        check.judge(*check.field, moment);
    } else {
        mark(*check.field, gem::NO_EXCEPTION);
    }
}

void FieldChecks::noteChange(Field& field) {
    errors_.trap(checkOf(field).change, [&] { changed_.insert(&field); });
}

void FieldChecks::judgeId(Field& field, const gem::RecordRules& rules) {
    const std::string text = textOf(field);
    gem::ErrorCode fault = gem::checkId(text, rules);
    if (fault == gem::NO_EXCEPTION && state_.editMode == form::EditMode::Adding) {
        const std::optional<bool> taken = standsIn(rules.ids, std::string(base::trimBlanks(text)));
        if (!taken) return;
        if (*taken) fault = gem::ID_EXIST;
    }
    mark(field, fault);
}

void FieldChecks::judgeName(Field& field, const gem::RecordRules& rules,
                            const std::string& loadedName) {
    const std::string text = textOf(field);
    gem::ErrorCode fault = gem::checkName(text);
    const bool isItsOwn = state_.editMode == form::EditMode::Editing && sameName(text, loadedName);
    if (fault == gem::NO_EXCEPTION && !isItsOwn) {
        const std::optional<bool> taken = standsIn(rules.names, gem::sqlText(text));
        if (!taken) return;
        if (*taken) fault = gem::NAME_EXIST;
    }
    mark(field, fault);
}

std::optional<bool> FieldChecks::standsIn(std::span<const gem::SearchedColumn> columns,
                                          const std::string& value) {
    const base::FailureWatch watch(errors_);
    for (const gem::SearchedColumn& searched : columns) {
        const bool found = database_.lCheckDuplicate(value, searched.column, searched.table);
        if (watch.failed()) return std::nullopt;
        if (found) return true;
    }
    return false;
}

void FieldChecks::judgeAlarmEvent(Field& field, Moment moment) {
    alarmLinks_.judge(field);
    if (moment == Moment::Leaving && changed_.contains(&field)) alarmLinks_.fillPartner(field);
}

void FieldChecks::followFormat(const char* procedure) {
    const Field& box = *form_.var.cmbVarFormat;
    if (!judging() || !box.isOpen() || box.text() == lastFormat_) return;
    errors_.trap(procedure, [&] {
        const std::string before = gem::formatCode(form::toUtf8(lastFormat_));
        lastFormat_ = box.text();
        if (form::toUtf8(format_.code()) != before) {
            format_.lVarSetFormatRight();
            errors_.trap(procedure, [&] { values_.judgeAnew(); });
        }
        format_.lVarCheckFormat();
    });
}

void FieldChecks::cmbVarFormat_LostFocus() {
    if (!judging()) return;
    errors_.trap("cmbVarFormat_LostFocus", [&] { format_.adoptSpelling(); });
    followFormat("cmbVarFormat_LostFocus");
}

bool FieldChecks::txtVarLmtCEID_Validate() {
    bool valid = true;
    errors_.trap("txtVarLmtCEID_Validate", [&] {
        Field& field = *form_.var.txtVarLmtCEID;
        const std::string text = textOf(field);
        if (!judging() || !field.isOpen() || base::isBlank(text) || base::isNumeric(text)) return;
        valid = false;
        records_.box().lReportError(QStringLiteral("Invalid value. Must be an integer."));
        field.setFocus();
    });
    return valid;
}

void FieldChecks::txtVarLmtCEID_LostFocus() {
    // A button loses its press together with the focus, so the focus waits until the mouse is let
    // go.
    QTimer::singleShot(0, form_.nav.cmdUpdate, [this] {
        if (QGuiApplication::mouseButtons() != Qt::NoButton) return txtVarLmtCEID_LostFocus();
        errors_.trap("txtVarLmtCEID_LostFocus", [&] {
            if (form_.nav.cmdUpdate->isEnabled())
                form_.nav.cmdUpdate->setFocus(Qt::OtherFocusReason);
        });
    });
}

bool FieldChecks::checkForSave(std::int16_t category) {
    if (form::isVariable(category)) return checkVariableForSave();
    switch (category) {
        case form::CSTALM:
            return checkAlarmForSave();
        case form::CSTEVT: {
            const form::EvtFrame& evt = form_.evt;
            return checkForSave({evt.txtEvtName, evt.txtEvtID, evt.txtEvtGroup, evt.txtEvtDesc},
                                &RecordChecks::lVerifyEvt);
        }
        case form::CSTRPT: {
            const form::RptFrame& rpt = form_.rpt;
            return checkForSave({rpt.txtRptName, rpt.txtRptID, rpt.txtRptDesc},
                                &RecordChecks::lVerifyRpt);
        }
        default:
            return true;
    }
}

bool FieldChecks::checkVariableForSave() {
    const form::VarFrame& var = form_.var;
    const bool identified =
        runForSave({var.txtVarName, var.txtVarID, var.txtVarGroup, var.txtVarDesc});
    const base::FailureWatch watch(errors_);
    errors_.trap("cmbVarFormat_LostFocus", [&] { format_.adoptSpelling(); });
    format_.lVarCheckFormat();
    const bool formatJudged = !watch.failed();
    const bool judged = checkForSave(
        {var.txtVarMin, var.txtVarMax, var.txtVarUnit, var.txtVarValue, var.txtVarDefValue},
        &RecordChecks::lVerifyVar);
    return identified && formatJudged && judged;
}

bool FieldChecks::checkAlarmForSave() {
    const form::AlmFrame& alm = form_.alm;
    alarmLinks_.releaseEmpty();
    return checkForSave(
        {alm.txtAlmName, alm.txtAlmID, alm.txtAlmText, alm.txtAlmGroup, alm.txtAlmSetCEID,
         alm.txtAlmSetCEName, alm.txtAlmClrCEID, alm.txtAlmClrCEName},
        &RecordChecks::lVerifyAlm);
}

bool FieldChecks::checkForSave(const std::vector<Field*>& fields, Verify verify) {
    const bool judged = runForSave(fields);
    const base::FailureWatch watch(errors_);
    const bool valid = (records_.*verify)();
    return judged && valid && !watch.failed();
}

bool FieldChecks::runForSave(const std::vector<Field*>& fields) {
    const bool limitsMayBeTooLarge =
        gem::kindOf(form::toUtf8(format_.code())) == gem::ValueKind::Unchecked;
    bool judged = true;
    for (Field* const field : fields) {
        const Check& check = checkOf(*field);
        const base::FailureWatch watch(errors_);
        errors_.trap(check.lostFocus, [&] { judge(check, Moment::Saving); });
        // U8 and I8 limits beyond 32 bits are legal although their comparison fails; nothing else
        // of these two can.
        const bool isLimit = field == form_.var.txtVarMin || field == form_.var.txtVarMax;
        if (watch.failed() && !(isLimit && limitsMayBeTooLarge)) judged = false;
    }
    return judged;
}

}  // namespace stelvan::checks
