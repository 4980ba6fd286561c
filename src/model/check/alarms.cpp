// The events of alarms: do they exist, and do identifier and name speak of the same one.
#include "base/run_time_error.h"
#include "base/text.h"
#include "gem/ids_and_names.h"
#include "gem/schema.h"
#include "model/check/record_reader.h"
#include "model/check/survey.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

using enum gem::Control;
namespace alarm = gem::schema::alarm;

struct Side {
    gem::Control id, name;
    std::string_view idColumn, nameColumn;
    const char* what;
};
constexpr Side kSides[] = {
    {txtAlmSetCEID, txtAlmSetCEName, alarm::kSetEventId, alarm::kSetEventName, "sets"},
    {txtAlmClrCEID, txtAlmClrCEName, alarm::kClearEventId, alarm::kClearEventName, "clears"},
};

constexpr const char* kMend =
    "Open the alarm with \"Edit\" and choose an event that exists, or add the event.";

/// What is no identifier of an event is told as a fault of the field.
bool isEventId(const std::string& text) {
    try {
        return gem::checkCeid(text) == gem::NO_EXCEPTION;
    } catch (const base::RunTimeError&) {
        return false;
    }
}

bool anyEventCalled(const Survey& survey, const std::string& name) {
    for (const Relation::Entry& event : survey.references.events().all())
        if (gem::sameName(event.item.name(), name)) return true;
    return false;
}

void checkById(Survey& survey, const Item& item, const Side& side, const std::string& id,
               const std::string& name) {
    const auto event = CrossReference::first(
        survey.references.events(), wholeNumber(jet::Value(std::string(base::trimBlanks(id)))));
    if (!event) {
        survey.add(item,
                   {Severity::Warning, "alarm-event-missing", side.idColumn,
                    "There is no event " + id + ", which is sent when the alarm " + side.what + ".",
                    kMend});
    } else if (!base::isBlank(name) && !gem::sameName(event->name(), name)) {
        survey.add(item, {Severity::Warning, "alarm-event-mismatch", side.nameColumn,
                          "Event " + id + " is called " + event->name() + ", not " + name + ".",
                          "Open the alarm with \"Edit\" and correct the name or the identifier."});
    }
}

}  // namespace

void checkAlarms(Survey& survey) {
    const Table& table = survey.model[Part::Alarms];
    if (!table.present) return;
    RecordReader reader(Part::Alarms, table);
    for (const Row& row : table.rows) {
        const Item item{Part::Alarms, &table, &row};
        const gem::Record& record = *reader.read(row);
        for (const Side& side : kSides) {
            const std::string& id = record[side.id].text;
            const std::string& name = record[side.name].text;
            if (!base::isBlank(id)) {
                if (isEventId(id)) checkById(survey, item, side, id, name);
            } else if (!base::isBlank(name) && !anyEventCalled(survey, name)) {
                survey.add(item, {Severity::Warning, "alarm-event-missing", side.nameColumn,
                                  "There is no event called " + name +
                                      ", which is sent when the alarm " + side.what + ".",
                                  kMend});
            }
        }
    }
}

}  // namespace stelvan::model
