// From the texts of a record to what its columns hold, and back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "gem/record.h"

namespace stelvan::gem {

struct ColumnValue {
    std::string_view column;
    std::variant<std::int32_t, std::string> value;
};

/// What a save writes, column by column in its order. Of the records that come with the standard,
/// only what the user may change: their closed fields would not survive the blanks.
[[nodiscard]] std::vector<ColumnValue> columnsOf(const Record& record);

/// A new record starts with these as well: with a Null list it would be offered in no pool.
[[nodiscard]] std::vector<ColumnValue> columnsOfNew(Kind kind);

/// Whether a text is NULL, which a save writes for a blank one; outer blanks and letter case apart.
[[nodiscard]] bool saysNull(std::string_view text);

/// Blanks the fields whose stored text stands for "no value", and those without a column.
void blankPlaceholders(Record& record);

}  // namespace stelvan::gem
