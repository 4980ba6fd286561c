// Rows of records as text for other programs: separated values, one line a row, the columns' names
// first.
#pragma once

#include <QString>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "db/record_set.h"
#include "model/core/sink.h"

namespace stelvan::browser {

struct TextForm {
    char separator;
    const char* lineEnd;
};
/// For the clipboard, as spreadsheets take it.
inline constexpr TextForm kTabSeparated{'\t', "\n"};
/// RFC 4180.
inline constexpr TextForm kCommaSeparated{',', "\r\n"};

/// Fields of the records in the order given, each as `cell` says it. A cell that holds a separator,
/// a quote or a line break is quoted; a record that is gone is left out. Throws RunTimeError, and
/// what the sink throws.
struct RowsAsText {
    const db::Recordset& records;
    std::vector<std::size_t> fields;
    std::function<QString(std::size_t field, const db::Value& value)> cell;

    void write(std::span<const std::int32_t> rows, TextForm form, const model::Sink& sink) const;
};

}  // namespace stelvan::browser
