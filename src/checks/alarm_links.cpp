#include "checks/alarm_links.h"

#include <functional>

#include "base/number.h"
#include "checks/field_text.h"
#include "gem/ids_and_names.h"

namespace stelvan::checks {

using form::Field;

namespace {

constexpr const char* kEventTables[] = {"secs_cusevent", "secs_gemevent"};

/// The first value of the one-column query that `accepts` takes; empty when there is none. A
/// failure has been reported by then.
QString firstValue(db::Operations& database, const std::string& sql,
                   const std::function<bool(const std::string&)>& accepts) {
    db::Connection connection;
    db::Recordset records;
    if (database.lGetRecordSet(connection, records, sql) == nullptr) return {};
    QString found;
    for (; found.isEmpty() && !records.eof(); records.moveNext()) {
        const std::string value = db::toTextOrEmpty(records.field(0));
        if (accepts(value)) found = form::toQt(value);
    }
    records.close();
    connection.close();
    return found;
}

}  // namespace

/// A field of the four with its neighbours: the same on the other side, and the other of the same
/// side.
struct AlarmLinks::Entry {
    Field* opposite;
    Field* partner;
    bool isId;
};

AlarmLinks::AlarmLinks(const form::AlmFrame& frame, db::Operations& database)
    : frame_(frame), database_(database) {}

AlarmLinks::Entry AlarmLinks::entryOf(const Field& field) const {
    if (&field == frame_.txtAlmSetCEID) return {frame_.txtAlmClrCEID, frame_.txtAlmSetCEName, true};
    if (&field == frame_.txtAlmClrCEID) return {frame_.txtAlmSetCEID, frame_.txtAlmClrCEName, true};
    if (&field == frame_.txtAlmSetCEName)
        return {frame_.txtAlmClrCEName, frame_.txtAlmSetCEID, false};
    return {frame_.txtAlmSetCEName, frame_.txtAlmClrCEID, false};
}

void AlarmLinks::judge(Field& left) {
    if (holdsNothing(left)) return;
    const Entry entry = entryOf(left);
    const std::string text = textOf(left);
    gem::ErrorCode fault = entry.isId ? gem::checkCeid(text) : gem::checkCeName(text);
    if (fault != gem::NO_EXCEPTION) return mark(left, fault);
    const gem::ErrorCode same = entry.isId ? gem::ALM_SETID_EQ_CLRID : gem::ALM_SETNAME_EQ_CLRNAME;
    Field& opposite = *entry.opposite;
    if (gem::samePair(text, textOf(opposite))) {
        mark(left, same);
        mark(opposite, same);
    } else {
        mark(left, gem::NO_EXCEPTION);
        if (opposite.marker() == QString::number(same)) mark(opposite, gem::NO_EXCEPTION);
    }
}

void AlarmLinks::fillPartner(Field& left) {
    const Entry entry = entryOf(left);
    Field& partner = *entry.partner;
    if (holdsNothing(left) || left.hasException() || !holdsNothing(partner) || !partner.isOpen())
        return;
    const std::string text(base::trimBlanks(textOf(left)));
    const QString found = entry.isId ? eventName(text) : eventId(text);
    if (found.isEmpty()) return;
    partner.setText(found);
    judge(partner);
}

void AlarmLinks::releaseEmpty() {
    for (Field* field : {frame_.txtAlmSetCEID, frame_.txtAlmSetCEName, frame_.txtAlmClrCEID,
                         frame_.txtAlmClrCEName}) {
        if (holdsNothing(*field)) mark(*field, gem::NO_EXCEPTION);
    }
}

QString AlarmLinks::lookUp(const std::string& wanted, const std::string& condition,
                           const std::function<bool(const std::string&)>& accepts) {
    const base::FailureWatch watch(database_.errors());
    for (const char* table : kEventTables) {
        std::string sql = "SELECT " + wanted;
        sql.append(" FROM ").append(table).append(" WHERE ").append(condition);
        QString found = firstValue(database_, sql, accepts);
        if (!found.isEmpty() || watch.failed()) return found;
    }
    return {};
}

QString AlarmLinks::eventName(const std::string& id) {
    return lookUp("evt_name", "evt_id = " + id,
                  [](const std::string& name) { return !base::isBlank(name); });
}

QString AlarmLinks::eventId(const std::string& name) {
    // Quotes are not doubled in SQL texts; what cannot be asked is not looked up.
    if (base::contains(name, '\'')) return {};
    return lookUp("evt_id", "evt_name = " + gem::sqlText(name), [](const std::string& id) {
        return base::isNumeric(id) &&
               std::is_gteq(base::compareDecimals(id, std::to_string(gem::kEventRules.lowestId)));
    });
}

}  // namespace stelvan::checks
