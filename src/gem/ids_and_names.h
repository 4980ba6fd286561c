// The rules for identifiers, names, groups, texts and collection-event links: text in, catalogue
// code out. What must be looked up in the database (does it exist already?) is told as tables and
// columns to search; the caller searches.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "gem/categories.h"
#include "gem/error_catalogue.h"

namespace stelvan::gem {

struct SearchedColumn {
    const char* table;
    const char* column;
};

/// One kind of record: where its identifiers start, and where identifiers and names must not stand
/// yet.
struct RecordRules {
    std::int32_t lowestId;
    ErrorCode idRange;
    std::span<const SearchedColumn> ids;    // in search order
    std::span<const SearchedColumn> names;  // in search order
};

// Alarms start at 1. The numbers below 101 of the other kinds belong to the standard items.
extern const RecordRules kAlarmRules;
extern const RecordRules kEventRules;
extern const RecordRules kReportRules;
extern const RecordRules kVariableRules;

/// The rules of a kind; std::logic_error for one whose records have no identifier.
[[nodiscard]] const RecordRules& rulesOf(Kind kind);

/// Reports of the standard, 0 to 100: shown, but neither edited nor deleted. False for a text that
/// is no number.
[[nodiscard]] bool isReservedReport(std::string_view reportId);

/// Whether two names are the same: outer blanks apart, compared by the order of the file's texts,
/// in which letter case does not count.
[[nodiscard]] bool sameName(std::string_view left, std::string_view right);

/// Up to the range; the caller searches `rules.ids` for a new record's identifier (ID_EXIST).
/// RunTimeError 6 for a number beyond 32 bits.
[[nodiscard]] ErrorCode checkId(std::string_view text, const RecordRules& rules);

/// Up to the blank; the caller searches `rules.names` (NAME_EXIST), except for a record's own name.
[[nodiscard]] ErrorCode checkName(std::string_view text);

[[nodiscard]] ErrorCode checkGroup(std::string_view text);

/// Descriptions and alarm texts.
[[nodiscard]] ErrorCode checkText(std::string_view text);

/// The identifier of a collection event in an alarm; not for an empty text. RunTimeError 6 beyond
/// 32 bits.
[[nodiscard]] ErrorCode checkCeid(std::string_view text);

/// The name of a collection event in an alarm; not for an empty text.
[[nodiscard]] ErrorCode checkCeName(std::string_view text);

/// Whether the set and clear entries of an alarm are the same: both non-empty and equal after
/// trimming.
[[nodiscard]] bool samePair(std::string_view set, std::string_view clear);

/// A text as a SQL literal: trimmed, in single quotes that are not doubled inside.
[[nodiscard]] std::string sqlText(std::string_view text);

}  // namespace stelvan::gem
