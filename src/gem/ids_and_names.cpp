#include "gem/ids_and_names.h"

#include "base/number.h"
#include "base/text.h"

namespace stelvan::gem {

namespace {

// The orders differ from kind to kind, and between identifiers and names; they decide which table a
// failing query names first.
constexpr SearchedColumn kAlarmIds[] = {{"secs_alarm", "alm_id"}};
constexpr SearchedColumn kAlarmNames[] = {{"secs_alarm", "alm_name"}};
constexpr SearchedColumn kEventIds[] = {{"secs_cusevent", "evt_id"}, {"secs_gemevent", "evt_id"}};
constexpr SearchedColumn kEventNames[] = {{"secs_gemevent", "evt_name"},
                                          {"secs_cusevent", "evt_name"}};
constexpr SearchedColumn kReportIds[] = {{"secs_report", "rpt_id"}};
constexpr SearchedColumn kReportNames[] = {{"secs_report", "rpt_name"}};
constexpr SearchedColumn kVariableIds[] = {{"secs_gemvar", "var_id"}, {"secs_cusvar", "var_id"}};
constexpr SearchedColumn kVariableNames[] = {{"secs_cusvar", "var_name"},
                                             {"secs_gemvar", "var_name"}};

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
