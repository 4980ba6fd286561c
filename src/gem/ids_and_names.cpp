#include "gem/ids_and_names.h"

#include <compare>
#include <stdexcept>

#include "base/number.h"
#include "base/text.h"
#include "gem/schema.h"
#include "jet/index/collation.h"

namespace stelvan::gem {

namespace {

// The orders differ from kind to kind, and between identifiers and names; they decide which table a
// failing query names first.
constexpr SearchedColumn kAlarmIds[] = {{schema::table::kAlarms, schema::alarm::kId}};
constexpr SearchedColumn kAlarmNames[] = {{schema::table::kAlarms, schema::alarm::kName}};
constexpr SearchedColumn kEventIds[] = {{schema::table::kCustomEvents, schema::event::kId},
                                        {schema::table::kGemEvents, schema::event::kId}};
constexpr SearchedColumn kEventNames[] = {{schema::table::kGemEvents, schema::event::kName},
                                          {schema::table::kCustomEvents, schema::event::kName}};
constexpr SearchedColumn kReportIds[] = {{schema::table::kReports, schema::report::kId}};
constexpr SearchedColumn kReportNames[] = {{schema::table::kReports, schema::report::kName}};
constexpr SearchedColumn kVariableIds[] = {
    {schema::table::kGemVariables, schema::variable::kId},
    {schema::table::kCustomVariables, schema::variable::kId}};
constexpr SearchedColumn kVariableNames[] = {
    {schema::table::kCustomVariables, schema::variable::kName},
    {schema::table::kGemVariables, schema::variable::kName}};

constexpr std::string_view kHighestReservedReport = "100";

/// What identifiers of records and of linked events have in common.
ErrorCode checkWholeNumber(std::string_view text, std::int32_t lowest, ErrorCode range) {
    if (base::hasInnerBlank(text)) return SPACE_BETWEEN;
    if (!base::isNumeric(text)) return REQUIRE_NUMERIC;
    if (base::contains(text, '.')) return REQUIRE_INTEGER;
    return base::toInt32(text) < lowest ? range : NO_EXCEPTION;
}

}  // namespace

constinit const RecordRules kAlarmRules = {1, ALM_ID_INVALID_RANGE, kAlarmIds, kAlarmNames};
constinit const RecordRules kEventRules = {101, EVT_ID_INVALID_RANGE, kEventIds, kEventNames};
constinit const RecordRules kReportRules = {101, RPT_ID_INVALID_RANGE, kReportIds, kReportNames};
constinit const RecordRules kVariableRules = {101, VAR_ID_INVALID_RANGE, kVariableIds,
                                              kVariableNames};

const RecordRules& rulesOf(Kind kind) {
    switch (kind) {
        case Kind::Variable:
            return kVariableRules;
        case Kind::Alarm:
            return kAlarmRules;
        case Kind::CollectionEvent:
            return kEventRules;
        case Kind::Report:
            return kReportRules;
        default:
            throw std::logic_error("records of this kind have no identifier");
    }
}

bool isReservedReport(std::string_view reportId) {
    return base::isNumeric(reportId) && std::is_gteq(base::compareDecimals(reportId, "0")) &&
           std::is_lteq(base::compareDecimals(reportId, kHighestReservedReport));
}

bool sameName(std::string_view left, std::string_view right) {
    return jet::compareText(base::trimBlanks(left), base::trimBlanks(right)) == 0;
}

ErrorCode checkId(std::string_view text, const RecordRules& rules) {
    if (base::isBlank(text)) return NULL_STRING;
    return checkWholeNumber(text, rules.lowestId, rules.idRange);
}

ErrorCode checkName(std::string_view text) {
    if (base::isBlank(text)) return NULL_STRING;
    return base::hasInnerBlank(text) ? SPACE_BETWEEN : NO_EXCEPTION;
}

ErrorCode checkGroup(std::string_view text) {
    return checkName(text);
}

ErrorCode checkText(std::string_view text) {
    return base::isBlank(text) ? NULL_STRING : NO_EXCEPTION;
}

ErrorCode checkCeid(std::string_view text) {
    return checkWholeNumber(text, kEventRules.lowestId, kEventRules.idRange);
}

ErrorCode checkCeName(std::string_view text) {
    return base::hasInnerBlank(text) ? SPACE_BETWEEN : NO_EXCEPTION;
}

bool samePair(std::string_view set, std::string_view clear) {
    return !base::isBlank(set) && base::trimBlanks(set) == base::trimBlanks(clear);
}

std::string sqlText(std::string_view text) {
    return "'" + std::string(base::trimBlanks(text)) + "'";
}

}  // namespace stelvan::gem
