#include "browser/record_view.h"

#include <QLabel>
#include <algorithm>
#include <limits>

#include "db/value_text.h"
#include "form/text.h"
#include "gem/formats.h"
#include "gem/kinds.h"
#include "gem/stored.h"

namespace stelvan::browser {
namespace {

using form::Field;

std::int32_t oneMore(std::int32_t position) {
    if (position == std::numeric_limits<std::int32_t>::max()) throw base::overflow();
    return position + 1;
}

}  // namespace

RecordView::RecordView(links::LinkEditors& links, settings::SettingInputs& settings)
    : window_(links.checks.window), links_(links), settings_(settings) {}

void RecordView::lUpdateNavigator() {
    base::trap("lUpdateNavigator", [this] {
        std::int32_t& position = window_.state.current.position;
        const std::int32_t count = window_.state.current.count();
        if (position > count) {
            position = count;
        } else if (position < 0) {
            position = 0;
            lClearField();
        }
        if (window_.state.current.records == nullptr) {
            window_.showMoveButtons(false, false);  // the others stay as they are
        } else {
            window_.showButtons();
        }
        window_.form.nav.showPlace(position, count);
    });
}

void RecordView::stepForwards(db::Recordset& records) {
    std::int32_t& position = window_.state.current.position;
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
    std::int32_t& position = window_.state.current.position;
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
    if (window_.state.current.records == nullptr) return;
    if (forwards) {
        stepForwards(*window_.state.current.records);
    } else {
        stepBackwards(*window_.state.current.records);
    }
    arrive();
}

void RecordView::arrive() {
    lUpdateNavigator();
    lDisplayField();
    refreshLists();
    window_.showButtons();  // which may depend on what is shown now
}

void RecordView::showRecord(std::int32_t position) {
    window_.errors.handle("showRecord", [&] {
        db::CurrentRecords& current = window_.state.current;
        if (window_.state.editing() || current.count() == 0) return;
        current.position = std::clamp(position, 1, current.count());
        current.records->setBookmark(current.records->storedBookmark(current.position - 1));
        arrive();
    });
}

void RecordView::cmdNext_Click() {
    window_.errors.handle("cmdNext_Click", [this] { move(true); });
}

void RecordView::cmdPrevious_Click() {
    window_.errors.handle("cmdPrevious_Click", [this] { move(false); });
}

void RecordView::lDisplayField() {
    const db::CurrentRecords& current = window_.state.current;
    bool& broken = window_.state.displayBroken;
    broken = !window_.errors.handle("lDisplayField", [this] { showCurrent(Nulls::Fail); });
    // Each turn one more has left; a failure of another kind ends it.
    for (std::int32_t before = -1; broken && !current.onRecord() && current.count() != before;) {
        before = current.count();
        broken = !window_.errors.handle("lDisplayField", [this] { showFollower(); });
    }
    if (window_.state.category == gem::GEMSTT && current.records != nullptr)
        window_.errors.handle("lDisplayField", [this] { settings_.lInitSttInput(false); });
    onDisplayed();
}

void RecordView::showFollower() {
    db::Recordset& records = *window_.state.current.records;
    records.moveNext();  // from the gap that it left
    if (records.eof() && records.recordCount() > 0) records.moveFirst();
    window_.state.current.position = records.position();
    lUpdateNavigator();
    showCurrent(Nulls::Fail);
}

void RecordView::displayNullsAsEmpty() {
    base::trap("lDisplayField", [this] {
        showCurrent(Nulls::Empty);
        window_.state.displayBroken = false;
    });
}

void RecordView::showCurrent(Nulls nulls) {
    const auto& records = window_.state.current.records;
    if (records == nullptr) return;
    if (records->recordCount() <= 0 || records->bof() || records->eof()) {
        lClearField();
        return;
    }
    if (window_.state.category == gem::LIMIT) return;
    gem::Record shown(window_.state.category);
    for (const gem::FieldFacts& facts : gem::fieldsOf(window_.state.category))
        if (facts.column.empty()) window_.form[facts.control].setText(QString());
    for (const gem::FieldFacts& facts : gem::fieldsOf(window_.state.category))
        showColumn(shown, facts, nulls);
    blankPlaceholders(shown);
}

void RecordView::showColumn(gem::Record& record, const gem::FieldFacts& facts, Nulls nulls) const {
    if (facts.column.empty()) return;
    Field& field = window_.form[facts.control];
    const db::Value value = window_.state.current.records->field(std::string(facts.column));
    std::string& text = record[facts.control].text;
    if (field.kind() == Field::Kind::Check) {
        text = (nulls == Nulls::Fail ? db::toFlag(value) : db::toFlagOrClear(value)) ? "1" : "0";
    } else {
        text = nulls == Nulls::Fail ? db::toText(value) : db::toTextOrEmpty(value);
    }
    field.setText(form::toQt(text));
}

void RecordView::blankPlaceholders(const gem::Record& shown) const {
    gem::Record blanked = shown;
    gem::blankPlaceholders(blanked);
    for (const gem::FieldFacts& facts : gem::fieldsOf(shown.kind())) {
        if (blanked[facts.control].text != shown[facts.control].text)
            window_.form[facts.control].setText(QString());
    }
}

void RecordView::lClearField() {
    base::trap("lClearField", [this] {
        const form::MainState& state = window_.state;
        if (state.current.records == nullptr || state.category == gem::GEMSTT) return;
        blankFields();
    });
}

void RecordView::blankFields() {
    for (const gem::FieldFacts& facts : gem::fieldsOf(window_.state.category))
        window_.form[facts.control].setText(QString());
}

void RecordView::refreshLists() {
    const form::MainState& state = window_.state;
    const bool shown = state.current.records != nullptr && state.current.position > 0;
    if (!shown) links_.clear();
    switch (gem::kindOf(state.category)) {
        case gem::Kind::CollectionEvent:
            if (shown) links_.eventReports.lUpdateEvtRptList(state.category == gem::GEMEVT);
            break;
        case gem::Kind::Variable: {
            const QString format = window_.form[gem::Control::cmbVarFormat].text();
            links_.listChildren.lUpdateVarChild(shown && gem::isList(form::toUtf8(format)));
            break;
        }
        case gem::Kind::Report:
            if (shown) links_.reportVariables.lUpdateRptVarList();
            break;
        default:
            break;
    }
}

void RecordView::lLinkDataField() {
    base::trap("lLinkDataField", [this] {
        for (const gem::FieldFacts& facts : gem::fieldsOf(window_.state.category)) {
            if (facts.column.empty()) continue;
            QWidget& widget = *window_.form[facts.control].widget();
            widget.setProperty("DataSource", QStringLiteral("AdoGEM"));
            widget.setProperty("DataField", form::toQt(facts.column));
        }
        if (gem::isVariable(window_.state.category)) cmbVarFormat_Change();
    });
}

}  // namespace stelvan::browser
