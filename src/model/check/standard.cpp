// The items that the standard prescribes: are they all there, and as shipped.
#include "base/text.h"
#include "gem/schema.h"
#include "model/check/record_reader.h"
#include "model/check/standard_items.h"
#include "model/check/survey.h"

namespace stelvan::model {
namespace {

constexpr Part kStandard[] = {Part::StandardVariables, Part::StandardEvents, Part::Reports};

/// Fields that the user may change do not count; of reports none may be, where they are the
/// standard's.
bool counts(const gem::Record& shipped, const gem::FieldFacts& field) {
    return shipped.kind() == gem::Kind::Report || !gem::mayChange(shipped.category(), field);
}

void differs(Survey& survey, const Item& item, std::string_view column, std::string_view shipped) {
    survey.add(item, {Severity::Note, "standard-item-differs", column,
                      "The shipped template has \"" + base::onOneLine(shipped) + "\".",
                      "Nothing, where the equipment is meant to differ."});
}

void compare(Survey& survey, const Item& item, const gem::Record* shipped,
             const gem::Record* stored) {
    if (shipped == nullptr || stored == nullptr) return;
    for (const gem::FieldFacts& field : gem::fieldsOf(shipped->kind())) {
        const bool known = !field.column.empty() && item.table->find(field.column);
        const bool isNull = jet::isNull(item.table->value(*item.row, field.column));
        if (!known || isNull || !counts(*shipped, field)) continue;
        if ((*stored)[field.control].text != (*shipped)[field.control].text)
            differs(survey, item, field.column, (*shipped)[field.control].text);
    }
}

void checkPart(Survey& survey, Part part) {
    const Table& present = survey.model[part];
    if (!present.present) return;
    const PartFacts& facts = factsOf(part);
    const Table shipped = standardItems(part);
    const Relation& known = part == Part::Reports               ? survey.references.reports()
                            : facts.kind == gem::Kind::Variable ? survey.references.variables()
                                                                : survey.references.events();
    RecordReader shippedReader(part, shipped);
    RecordReader reader(part, present);
    for (const Row& row : shipped.rows) {
        const auto id = shipped.number(row, facts.id);
        const auto item = CrossReference::first(known, id);
        if (!item || item->part != part) {
            survey.addAbsent(part, static_cast<std::int32_t>(id.value_or(0)),
                             shipped.text(row, facts.name),
                             {Severity::Note, "standard-item-missing", facts.id,
                              "An item of the standard is not there.",
                              "Nothing, where the equipment does without; else take it over from "
                              "the shipped template."});
            continue;
        }
        constexpr const char* kType = gem::schema::variable::kType;
        if (shipped.text(row, kType) != present.text(*item->row, kType))
            differs(survey, *item, kType, shipped.text(row, kType));
        compare(survey, *item, shippedReader.read(row), reader.read(*item->row));
    }
}

}  // namespace

void checkStandard(Survey& survey) {
    for (const Part part : kStandard) checkPart(survey, part);
}

}  // namespace stelvan::model
