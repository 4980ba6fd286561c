#include "model/check/record_reader.h"

#include <algorithm>

#include "base/text.h"
#include "gem/ids_and_names.h"
#include "gem/schema.h"
#include "gem/stored.h"
#include "jet/rows/conversion.h"
#include "jet/rows/value_text.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

namespace variable = gem::schema::variable;
using enum gem::Control;

bool isOffered(std::string_view format, std::int16_t category) {
    return std::ranges::any_of(gem::formatsOffered(category), [&](std::string_view offered) {
        return base::sameWord(offered, format);
    });
}

/// As the editor does when a variable's edit begins.
void applyFormat(gem::Record& record) {
    const std::string code = record.format();
    const gem::OpenedFields opened =
        isOffered(code, record.category()) ? gem::openedBy(code) : gem::OpenedFields{};
    for (const gem::Control field : gem::kByFormat) {
        if (gem::opens(opened, field)) continue;
        record[field].open = false;
        if (opened.emptiesClosed) record[field].text.clear();
    }
}

}  // namespace

RecordReader::RecordReader(Part part, const Table& table) : part_(part), table_(table) {
    const gem::Kind kind = factsOf(part).kind;
    for (const gem::FieldFacts& field : gem::fieldsOf(kind))
        if (!field.column.empty()) columns_.push_back({&field, table.find(field.column)});
    if (kind != gem::Kind::Variable) return;
    type_ = table.find(variable::kType);
    parent_ = table.find(variable::kParentKey);
}

std::int16_t RecordReader::category(const Row& row) {
    const std::string type = type_ ? jet::textOf(row.values[*type_]) : std::string();
    const auto known = categories_.find(type);
    if (known != categories_.end()) return known->second;
    return categories_[type] = categoryOf(part_, table_, row);
}

gem::Record* RecordReader::read(const Row& row) {
    const std::int16_t now = category(row);
    if (now == gem::NO_CATEGORY) return nullptr;
    std::optional<gem::Record>& record = records_[static_cast<std::size_t>(now)];
    if (!record) record.emplace(now);
    fill(*record, row);
    gem::blankPlaceholders(*record);
    follow(*record, row);
    return &*record;
}

void RecordReader::fill(gem::Record& record, const Row& row) const {
    for (const Column& column : columns_) {
        gem::FieldState& state = record[column.field->control];
        state.fault = gem::NO_EXCEPTION;
        state.open = gem::mayChange(record.category(), *column.field);
        if (!column.at) {
            state.text.clear();
        } else if (column.field->stored == gem::Stored::Flag) {
            state.text = jet::flagOf(row.values[*column.at]).value_or(false) ? "1" : "0";
        } else {
            state.text = jet::textOf(row.values[*column.at]);
        }
    }
}

void RecordReader::follow(gem::Record& record, const Row& row) const {
    record.judgedAgainstBlank = None;
    if (record.kind() == gem::Kind::Report && gem::isReservedReport(record[txtRptID].text))
        for (const Column& column : columns_) record[column.field->control].open = false;
    if (!gem::isCustomVariable(record.category())) return;
    record.formatKnown = isOffered(record[cmbVarFormat].text, record.category());
    record.childOfList = parent_ && wholeNumber(row.values[*parent_]).value_or(0) != 0;
    applyFormat(record);
}

}  // namespace stelvan::model
