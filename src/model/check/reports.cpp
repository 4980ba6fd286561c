// Reports that carry nothing or that nobody sends, and events that send nothing.
#include "gem/ids_and_names.h"
#include "gem/links.h"
#include "model/check/survey.h"

namespace stelvan::model {
namespace {

bool carriesVariable(const Survey& survey, std::int64_t report) {
    for (const Relation::Entry& link : survey.references.variablesOfReport().of(report)) {
        const auto variable = link.item.number(factsOf(Part::ReportVariables).target);
        if (CrossReference::first(survey.references.variables(), variable)) return true;
    }
    return false;
}

void checkReport(Survey& survey, const Item& report, std::int64_t id) {
    if (!carriesVariable(survey, id))
        survey.add(report, {Severity::Error, "empty-report", "", std::string(gem::kMustContainItem),
                            gem::isReservedReport(report.idText())
                                ? "Take its variables over from the shipped template; the editor "
                                  "does not change reports of the standard."
                                : "Open the report with \"Edit\" and choose its variables, or "
                                  "delete it."});
    if (survey.references.eventsOfReport().of(id).empty())
        survey.add(report, {Severity::Note, "unused-report", "", "No event sends the report.",
                            "Choose it for an event, or leave that to the host."});
}

void checkEvents(Survey& survey, Part part) {
    const Table& table = survey.model[part];
    for (const Row& row : table.rows) {
        const Item event{part, &table, &row};
        const auto id = event.id();
        if (!id || !survey.references.reportsOfEvent().of(*id).empty()) continue;
        survey.add(event, {Severity::Note, "unreported-event", "", "The event sends no report.",
                           "Choose its reports, or leave that to the host."});
    }
}

}  // namespace

void checkReports(Survey& survey) {
    const Table& table = survey.model[Part::Reports];
    for (const Row& row : table.rows) {
        const Item report{Part::Reports, &table, &row};
        if (const auto id = report.id()) checkReport(survey, report, *id);
    }
    checkEvents(survey, Part::StandardEvents);
    checkEvents(survey, Part::CustomEvents);
}

}  // namespace stelvan::model
