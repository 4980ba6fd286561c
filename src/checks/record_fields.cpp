#include "checks/record_fields.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "db/value_text.h"
#include "form/text.h"
#include "gem/ids_and_names.h"
#include "gem/kinds.h"
#include "gem/schema.h"

namespace stelvan::checks {
namespace {

/// A marker that names no exception is none that a rule could know.
gem::ErrorCode faultOf(const form::Field& field) {
    bool isNumber = false;
    const int code = field.marker().toInt(&isNumber);
    const bool isCode = isNumber && code >= 0 && code < static_cast<int>(gem::kErrorSlots);
    return static_cast<gem::ErrorCode>(isCode ? code : gem::kErrorSlots);
}

bool standsIn(const db::Operations& database, std::span<const gem::SearchedColumn> columns,
              const std::string& literal) {
    return std::any_of(columns.begin(), columns.end(), [&](const gem::SearchedColumn& searched) {
        return database.lCheckDuplicate(literal, searched.column, searched.table);
    });
}

}  // namespace

bool StoredOthers::idExists(gem::Kind kind, const std::string& id) {
    return standsIn(database_, gem::rulesOf(kind).ids, id);
}

bool StoredOthers::nameExists(gem::Kind kind, const std::string& name) {
    return standsIn(database_, gem::rulesOf(kind).names, gem::sqlText(name));
}

gem::Record RecordFields::read() const {
    gem::Record record(window_.state.category);
    for (const gem::FieldFacts& facts : gem::fieldsOf(record.kind())) {
        const form::Field& field = window_.form[facts.control];
        record[facts.control] = {form::toUtf8(field.text()), faultOf(field), field.isOpen()};
    }
    record.adding = window_.state.editMode == form::EditMode::Adding;
    record.loadedName = window_.state.loadedName;
    record.judgedAgainstBlank = judgedAgainstBlank_;
    if (record.kind() == gem::Kind::Variable) {
        record.formatKnown = lCheckFormat(window_.form[gem::Control::cmbVarFormat].text());
        const std::string parent = stored(gem::schema::variable::kParentKey);
        record.childOfList = base::isNumeric(parent) && base::toDouble(parent) != 0;
    }
    return record;
}

void RecordFields::mark(const gem::Record& before, const gem::Record& after) {
    judgedAgainstBlank_ = after.judgedAgainstBlank;
    for (const gem::FieldFacts& facts : gem::fieldsOf(after.kind())) {
        const gem::ErrorCode fault = after[facts.control].fault;
        if (fault != before[facts.control].fault)
            window_.form[facts.control].setMarker(QString::number(fault));
    }
}

void RecordFields::apply(const Rule& rule) {
    const gem::Record before = read();
    gem::Record after = before;
    try {
        rule(after);
    } catch (...) {
        mark(before, after);
        throw;
    }
    mark(before, after);
}

void RecordFields::judge(gem::Control field, gem::Moment moment) {
    StoredOthers others(window_.operations);
    apply([&](gem::Record& record) { gem::judge(record, field, moment, others); });
}

bool RecordFields::lCheckFormat(const QString& format) const {
    return base::trap("lCheckFormat", [&] {
        const QStringList entries = window_.form[gem::Control::cmbVarFormat].entries();
        const std::string wanted = form::toUtf8(format);
        return std::any_of(entries.begin(), entries.end(), [&wanted](const QString& entry) {
            return base::sameWord(form::toUtf8(entry), wanted);
        });
    });
}

std::string RecordFields::stored(std::string_view column) const {
    const form::MainState& state = window_.state;
    if (state.editMode != form::EditMode::Editing || !state.current.onRecord()) return {};
    // Not what is pending: a save that failed half-way leaves its new values there.
    const db::Recordset& records = *state.current.records;
    for (std::size_t i = 0; i < records.fieldCount(); ++i)
        if (base::sameWord(records.fieldName(i), column))
            return db::toTextOrEmpty(records.storedField(records.position() - 1, i));
    return {};
}

}  // namespace stelvan::checks
