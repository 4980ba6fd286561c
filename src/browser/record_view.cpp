#include "browser/record_view.h"

#include <QLabel>
#include <QPushButton>
#include <limits>

#include "browser/field_map.h"
#include "db/value_text.h"
#include "form/text.h"

namespace stelvan::browser {
namespace {

using form::Field;
using form::isGemVariable;
using form::isVariable;

constexpr const char* kListFormat = "L";

/// What stored texts stand for "no value", letter case and outer blanks apart.
bool isAbsent(const Field& field, bool zeroToo) {
    const QString text = field.text().trimmed();
    return text.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0 ||
           (zeroToo && text == QLatin1String("0"));
}

void blankIfAbsent(Field& field, bool zeroToo) {
    if (isAbsent(field, zeroToo)) field.setText(QString());
}

/// "&Delete" is for records that the user may also add.
bool canDelete(std::int16_t category) {
    return (category >= form::CSTALM && category <= form::CSTVEC) || category == form::CSTRPT ||
           category == form::LIMIT;
}

std::int32_t oneMore(std::int32_t position) {
    if (position == std::numeric_limits<std::int32_t>::max()) throw base::overflow();
    return position + 1;
}

void setEnabled(QPushButton& button, QPushButton& other, bool enabled) {
    const bool handsOver = !enabled && button.hasFocus();
    if (handsOver && other.isEnabled()) other.setFocus(Qt::OtherFocusReason);
    button.setEnabled(enabled);
}

}  // namespace

RecordView::RecordView(const form::MainForm& form, form::MainState& state, base::ErrorInfo& errors,
                       const RecordLists& lists, settings::SettingInputs& settings)
    : form_(form), state_(state), errors_(errors), lists_(lists), settings_(settings) {}

QString RecordView::format() const {
    return form_.var.cmbVarFormat->text().toUpper();
}

void RecordView::setMoveButtons(bool previous, bool next) {
    // The one that opens comes first, so that it can take the focus from the one that closes.
    if (previous) form_.nav.cmdPrevious->setEnabled(true);
    setEnabled(*form_.nav.cmdNext, *form_.nav.cmdPrevious, next);
    setEnabled(*form_.nav.cmdPrevious, *form_.nav.cmdNext, previous);
}

void RecordView::lUpdateNavigator() {
    errors_.trap("lUpdateNavigator", [this] {
        const auto& records = state_.current.records;
        if (records == nullptr) {
            setMoveButtons(false, false);
            form_.nav.lblRecNumber->setText(QStringLiteral("0 of 0"));
            return;
        }
        const std::int32_t count = records->recordCount();
        std::int32_t& position = state_.current.position;
        if (position > count) {
            position = count;
        } else if (position < 0) {
            position = 0;
            lClearField();
        }
        setMoveButtons(position > 1, position < count);
        if (count < 1) {
            form_.nav.cmdDelete->setEnabled(false);
            form_.nav.cmdUpdate->setEnabled(false);
        } else {
            form_.nav.cmdDelete->setEnabled(canDelete(state_.category));
        }
        form_.nav.lblRecNumber->setText(QStringLiteral("%1 of %2").arg(position).arg(count));
    });
}

void RecordView::stepForwards(db::Recordset& records) {
    std::int32_t& position = state_.current.position;
    const std::int32_t count = records.recordCount();
    if (count == 0) {
        position = 0;
        lClearField();
    } else if (records.eof()) {
        if (records.bof()) return;
        records.moveFirst();
        position = 1;
    } else {
        records.moveNext();
        position = oneMore(position);
        if (position > count) {
            --position;
            records.moveLast();
        }
    }
}

void RecordView::stepBackwards(db::Recordset& records) {
    std::int32_t& position = state_.current.position;
    if (records.bof()) {
        if (records.eof()) return;
        records.moveLast();
        position = records.recordCount();
    } else {
        records.movePrevious();
        if (position > 1) {
            --position;
        } else {
            records.moveFirst();
        }
    }
}

void RecordView::move(bool forwards) {
    if (state_.current.records == nullptr) return;
    if (forwards) {
        stepForwards(*state_.current.records);
    } else {
        stepBackwards(*state_.current.records);
    }
    lUpdateNavigator();
    lDisplayField();
    refreshLists();
    if (state_.category == form::CSTRPT) lists_.reportVariables.lRptSetRightByRecord(false);
}

void RecordView::cmdNext_Click() {
    errors_.trap("cmdNext_Click", [this] { move(true); });
}

void RecordView::cmdPrevious_Click() {
    errors_.trap("cmdPrevious_Click", [this] { move(false); });
}

void RecordView::lDisplayField() {
    incomplete_ = false;
    if (!errors_.trap("lDisplayField", [this] { showCurrent(Nulls::Fail); })) incomplete_ = true;
    if (state_.category == form::GEMSTT && state_.current.records != nullptr) {
        settings_.lInitSttInput(false);
        settings_.lSttSetRightByRecord();
    }
}

void RecordView::displayNullsAsEmpty() {
    errors_.trap("lDisplayField", [this] {
        showCurrent(Nulls::Empty);
        incomplete_ = false;
    });
}

void RecordView::showCurrent(Nulls nulls) {
    const auto& records = state_.current.records;
    if (records == nullptr) return;
    if (records->recordCount() <= 0 || records->bof() || records->eof()) {
        lClearField();
        return;
    }
    if (state_.category == form::LIMIT) return;
    for (const Binding& bound : bindingsOf(form_, state_.category)) {
        const db::Value value = records->field(bound.column);
        if (bound.field->kind() == Field::Kind::Check) {
            bound.field->setChecked(nulls == Nulls::Fail ? db::toFlag(value)
                                                         : db::toFlagOrClear(value));
        } else {
            bound.field->setText(
                form::toQt(nulls == Nulls::Fail ? db::toText(value) : db::toTextOrEmpty(value)));
        }
    }
    cleanUp();
}

void RecordView::cleanUp() {
    const form::VarFrame& var = form_.var;
    const form::AlmFrame& alm = form_.alm;
    if (isVariable(state_.category)) {
        const auto noLimit = [](const Field& field) {
            return isAbsent(field, true) || field.text().trimmed().isEmpty();
        };
        if (noLimit(*var.txtVarMin) && noLimit(*var.txtVarMax)) {
            var.txtVarMin->setText(QString());
            var.txtVarMax->setText(QString());
        }
        blankIfAbsent(*var.txtVarUnit, true);
        blankIfAbsent(*var.txtVarValue, false);
        blankIfAbsent(*var.txtVarDefValue, false);
        for (Field* unstored : {var.txtVarLmtCEID, var.txtVarLmtCEName})
            unstored->setText(QString());
    } else if (state_.category == form::CSTALM) {
        for (Field* event :
             {alm.txtAlmSetCEID, alm.txtAlmSetCEName, alm.txtAlmClrCEID, alm.txtAlmClrCEName})
            blankIfAbsent(*event, true);
    }
}

void RecordView::lClearField() {
    errors_.trap("lClearField", [this] {
        if (state_.current.records == nullptr || state_.category == form::GEMSTT) return;
        for (const Binding& bound : bindingsOf(form_, state_.category))
            bound.field->setText(QString());
        if (!isVariable(state_.category)) return;
        form_.var.txtVarLmtCEID->setText(QString());
        form_.var.txtVarLmtCEName->setText(QString());
    });
}

void RecordView::refreshLists() {
    const std::int16_t category = state_.category;
    const bool shown = state_.current.records != nullptr && state_.current.position > 0;
    if (category == form::GEMEVT || category == form::CSTEVT) {
        if (!shown) lists_.eventReports.clear();
        if (shown) lists_.eventReports.lUpdateEvtRptList(category == form::GEMEVT);
    } else if (isVariable(category)) {
        const bool isList = shown && format() == QLatin1String(kListFormat);
        if (!shown) lists_.listChildren.clear();
        lists_.listChildren.lUpdateVarChild(isList);
        if (isGemVariable(category) && shown) form_.nav.cmdUpdate->setEnabled(!isList);
    } else if (category == form::CSTRPT) {
        if (!shown) lists_.reportVariables.clear();
        if (shown) lists_.reportVariables.lUpdateRptVarList();
    }
}

void RecordView::clearLists() {
    lists_.eventReports.clear();
    lists_.reportVariables.clear();
    lists_.listChildren.clear();
}

void RecordView::lLinkDataField() {
    errors_.trap("lLinkDataField", [this] {
        for (const Binding& bound : bindingsOf(form_, state_.category)) {
            bound.field->widget()->setProperty("DataSource", QStringLiteral("AdoGEM"));
            bound.field->widget()->setProperty("DataField", QLatin1String(bound.column));
        }
        if (isVariable(state_.category)) cmbVarFormat_Change();
    });
}

}  // namespace stelvan::browser
