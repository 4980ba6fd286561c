#include "checks/event_choice.h"

#include <algorithm>
#include <compare>

#include "base/number.h"
#include "db/query.h"
#include "form/text.h"
#include "gem/ids_and_names.h"
#include "gem/kinds.h"
#include "gem/queries.h"
#include "gem/schema.h"

namespace stelvan::checks {
namespace {

using enum gem::Control;

const QStringList kHeaders = {QStringLiteral("ID"), QStringLiteral("Name")};
const std::vector<int> kWidths = {-10, 1};

}  // namespace

EventChoice::EventChoice(form::Window& window, RecordFields& fields, RecordChecks& records)
    : window_(window), fields_(fields), records_(records) {}

void EventChoice::connectFields() {
    for (const Fields& pair :
         {Fields{txtAlmSetCEID, txtAlmSetCEName}, Fields{txtAlmClrCEID, txtAlmClrCEName},
          Fields{txtVarLmtCEID, txtVarLmtCEName}}) {
        connectField(pair.id, pair);
        connectField(pair.name, pair);
    }
}

void EventChoice::connectField(gem::Control control, const Fields& pair) {
    form::Field* const field = &window_.form[control];
    field->offerChoice(QStringLiteral("Choose an event (F4 or Alt+Down)"));
    QObject::connect(field, &form::Field::choiceWanted, field,
                     [this, control, pair] { offer(control, pair); });
}

std::vector<form::ListRow> EventChoice::events() const {
    std::vector<form::ListRow> rows;
    const std::string lowest = std::to_string(gem::kEventRules.lowestId);
    for (const char* table : {gem::schema::table::kCustomEvents, gem::schema::table::kGemEvents}) {
        db::Query query(window_.operations, gem::allEvents(table));
        query.forEach([&](const db::Query& event) {
            const std::string id = event.text(gem::schema::event::kId);
            if (base::isNumeric(id) && std::is_gteq(base::compareDecimals(id, lowest)))
                rows.push_back(
                    {{form::toQt(id), form::toQt(event.text(gem::schema::event::kName))}});
        });
    }
    return rows;
}

void EventChoice::offer(gem::Control field, const Fields& pair) {
    window_.errors.handle(std::string(gem::nameOf(field)) + "_KeyDown", [&] {
        const std::vector<form::ListRow> rows = events();
        const QString id = window_.form[pair.id].text().trimmed();
        const auto chosen = std::find_if(rows.begin(), rows.end(), [&id](const form::ListRow& row) {
            return row.texts.first() == id;
        });
        if (list_ == nullptr) {
            list_ = new form::PickList(*window_.form[field].widget()->window());
            QObject::connect(list_, &form::PickList::chosen, list_,
                             [this](const QStringList& event) { take(event); });
        }
        asking_ = pair;
        list_->open(*window_.form[field].widget(), kHeaders, kWidths, rows,
                    chosen == rows.end() ? -1 : static_cast<int>(chosen - rows.begin()));
    });
}

void EventChoice::take(const QStringList& event) {
    window_.form[asking_.id].setText(event.value(0));
    window_.form[asking_.name].setText(event.value(1));
    // The events of a limit are not stored, and not judged.
    if (gem::kindOf(window_.state.category) != gem::Kind::Alarm || !window_.judging()) return;
    window_.errors.handle(gem::lostFocusNameOf(gem::factsOf(asking_.id)), [&] {
        fields_.judge(asking_.id, gem::Moment::Leaving);
        fields_.judge(asking_.name, gem::Moment::Leaving);
        records_.verify(gem::Kind::Alarm);
    });
}

}  // namespace stelvan::checks
