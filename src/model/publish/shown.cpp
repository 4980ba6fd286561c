#include "model/publish/shown.h"

#include "gem/kinds.h"
#include "gem/stored.h"
#include "jet/rows/conversion.h"

namespace stelvan::model {

gem::Record shownRecord(const Item& item) {
    gem::Record record(item.category());
    for (const gem::FieldFacts& field : gem::fieldsOf(record.kind()))
        if (!field.column.empty()) record[field.control].text = item.text(field.column);
    gem::blankPlaceholders(record);
    return record;
}

std::string_view typeOf(const Item& variable) {
    return gem::categoryAt(variable.category()).type;
}

bool isSet(const Item& item, std::string_view column) {
    return jet::flagOf(item.table->value(*item.row, column)).value_or(false);
}

}  // namespace stelvan::model
