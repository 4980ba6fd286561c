#include "checks/alarm_links.h"

#include <compare>

#include "base/number.h"
#include "base/text.h"
#include "db/query.h"
#include "db/value_text.h"
#include "form/text.h"
#include "gem/alarms.h"
#include "gem/ids_and_names.h"
#include "gem/kinds.h"
#include "gem/queries.h"
#include "gem/schema.h"

namespace stelvan::checks {
namespace {

constexpr const char* kEventTables[] = {gem::schema::table::kCustomEvents,
                                        gem::schema::table::kGemEvents};

}  // namespace

void AlarmLinks::fillPartner(gem::Control left) {
    const gem::Control partner = gem::alarmEventField(left).partner;
    const gem::Record record = fields_.read();
    const gem::FieldState& from = record[left];
    const gem::FieldState& to = record[partner];
    const bool fills = !base::isBlank(from.text) && from.fault == gem::NO_EXCEPTION &&
                       base::isBlank(to.text) && to.open;
    if (!fills) return;
    const std::string text(base::trimBlanks(from.text));
    const bool isId = gem::factsOf(left).check == gem::Check::EventId;
    const std::string found = isId ? eventName(text) : eventId(text);
    if (found.empty()) return;
    window_.form[partner].setText(form::toQt(found));
    fields_.judge(partner, gem::Moment::Leaving);
}

std::string AlarmLinks::firstValue(const std::string& sql, const Accepts& accepts) const {
    db::Query query(window_.operations, sql);
    for (db::Recordset& records = query.records(); !records.eof(); records.moveNext()) {
        std::string value = db::toTextOrEmpty(records.field(0));
        if (accepts(value)) return value;
    }
    return {};
}

std::string AlarmLinks::eventName(const std::string& id) const {
    for (const char* table : kEventTables) {
        std::string name = firstValue(gem::eventName(table, id), [](const std::string& value) {
            return !base::isBlank(value);
        });
        if (!name.empty()) return name;
    }
    return {};
}

std::string AlarmLinks::eventId(const std::string& name) const {
    // Quotes are not doubled in SQL texts; what cannot be asked is not looked up.
    if (base::contains(name, '\'')) return {};
    for (const char* table : kEventTables) {
        std::string id = firstValue(gem::eventId(table, name), [](const std::string& value) {
            const std::string lowest = std::to_string(gem::kEventRules.lowestId);
            return base::isNumeric(value) && std::is_gteq(base::compareDecimals(value, lowest));
        });
        if (!id.empty()) return id;
    }
    return {};
}

}  // namespace stelvan::checks
