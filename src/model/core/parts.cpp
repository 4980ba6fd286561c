#include "model/core/parts.h"

#include <array>

#include "gem/schema.h"

namespace stelvan::model {
namespace {

using gem::Kind;
namespace alarm = gem::schema::alarm;
namespace event = gem::schema::event;
namespace event_report = gem::schema::event_report;
namespace limit = gem::schema::limit;
namespace report = gem::schema::report;
namespace report_variable = gem::schema::report_variable;
namespace setting = gem::schema::setting;
namespace table = gem::schema::table;
namespace variable = gem::schema::variable;

constexpr bool kCustom = true;
constexpr bool kStandard = false;

// clang-format off
constexpr std::array<PartFacts, kParts> kFacts = {{
    {Part::StandardVariables, table::kGemVariables, Kind::Variable, kStandard, "variable",
     variable::kId, variable::kName},
    {Part::CustomVariables, table::kCustomVariables, Kind::Variable, kCustom, "variable",
     variable::kId, variable::kName},
    {Part::StandardEvents, table::kGemEvents, Kind::CollectionEvent, kStandard, "event",
     event::kId, event::kName},
    {Part::CustomEvents, table::kCustomEvents, Kind::CollectionEvent, kCustom, "event",
     event::kId, event::kName},
    {Part::Alarms, table::kAlarms, Kind::Alarm, kCustom, "alarm", alarm::kId, alarm::kName},
    {Part::Reports, table::kReports, Kind::Report, kCustom, "report", report::kId, report::kName},
    {Part::Settings, table::kSettings, Kind::ProtocolSettings, kStandard, "setting",
     setting::kField, ""},
    {Part::Limits, "", Kind::Limit, kCustom, "limit", limit::kVariableId, "", "", limit::kId},
    {Part::EventReports, table::kEventReports, Kind::None, kCustom, "event-report link",
     event_report::kEventId, "", event_report::kReportId, event_report::kOrder},
    {Part::ReportVariables, table::kReportVariables, Kind::None, kCustom, "report-variable link",
     report_variable::kReportId, "", report_variable::kVariableId, report_variable::kOrder},
}};
// clang-format on

constexpr std::array kVariables = {Part::StandardVariables, Part::CustomVariables};
constexpr std::array kEvents = {Part::StandardEvents, Part::CustomEvents};
constexpr std::array kReports = {Part::Reports};

}  // namespace

std::span<const PartFacts> parts() {
    return kFacts;
}

const PartFacts& factsOf(Part part) {
    return kFacts[indexOf(part)];
}

std::span<const Part> ownersOf(Part links) {
    if (links == Part::EventReports) return kEvents;
    if (links == Part::ReportVariables) return kReports;
    return {};
}

std::span<const Part> targetsOf(Part links) {
    if (links == Part::EventReports) return kReports;
    if (links == Part::ReportVariables) return kVariables;
    return {};
}

}  // namespace stelvan::model
