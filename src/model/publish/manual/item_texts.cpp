#include "model/publish/manual/item_texts.h"

#include "gem/kinds.h"
#include "gem/stored.h"
#include "jet/rows/conversion.h"

namespace stelvan::model::manual {
namespace {

/// Variables of no known type have the fields of all variables.
std::int16_t categoryFor(const Item& item) {
    const std::int16_t category = item.category();
    return category == gem::NO_CATEGORY ? std::int16_t{gem::CSTVSV} : category;
}

std::string textOf(const Item& item, const gem::FieldFacts& field) {
    if (field.stored != gem::Stored::Flag) return item.text(field.column);
    const auto flag = jet::flagOf(item.table->value(*item.row, field.column));
    return !flag ? "" : *flag ? "1" : "0";
}

}  // namespace

gem::Record textsOf(const Item& item) {
    gem::Record record(categoryFor(item));
    for (const gem::FieldFacts& field : gem::fieldsOf(record.kind())) {
        if (field.column.empty()) continue;
        std::string& text = record[field.control].text;
        text = textOf(item, field);
        const bool blankIsNull =
            field.stored == gem::Stored::TrimmedOrNull || field.stored == gem::Stored::TypedOrNull;
        if (blankIsNull && gem::saysNull(text)) text.clear();
    }
    gem::blankPlaceholders(record);
    return record;
}

}  // namespace stelvan::model::manual
