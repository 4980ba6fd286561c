// Comma-separated values as spreadsheets read and write them (RFC 4180): UTF-8, cells with breaks
// and quotes in quotes.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stelvan::model {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct CsvRecord {
    std::size_t line = 0;  // where it begins, from 1
    std::vector<std::string> cells;
};

/// The records of a text, without empty lines and the byte-order mark. The separator is the comma
/// or the semicolon, whichever the first record has more of. Lines end with LF or CR LF. Throws
/// Refusal ("line 3: ...") for a quote that is not closed, or closed within a cell.
[[nodiscard]] std::vector<CsvRecord> parseCsv(std::string_view text);

/// Appends one record, with CR LF.
void appendCsv(std::string& out, std::span<const std::string> cells);

/// A text as a cell that no spreadsheet takes for a formula: what begins like one gets an
/// apostrophe in front, as does what begins with an apostrophe.
[[nodiscard]] std::string guardedCell(std::string text);
/// The text behind such a cell: without one leading apostrophe.
[[nodiscard]] std::string unguardedCell(std::string cell);

}  // namespace stelvan::model
