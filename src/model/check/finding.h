// One thing that is wrong, or worth knowing, in a model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "jet/rows/column_facts.h"
#include "jet/rows/value.h"
#include "model/core/parts.h"

namespace stelvan::model {

enum class Severity : std::uint8_t { Note, Warning, Error };

/// "note", "warning", "error".
[[nodiscard]] std::string_view nameOf(Severity severity);

struct Finding {
    Severity severity = Severity::Note;
    std::string rule;   // "dangling-report"; the name by which rules are listed and counted
    std::string table;  // as the file spells it
    jet::Value id;      // of the item; of the owner, for link rows; Null where there is none
    std::string name;   // of the item or owner, empty where it has none
    std::string field;  // the column at fault, empty where it is the whole row
    std::string text;   // what is wrong
    std::string mend;   // what to do about it
    std::optional<Part> part = {};  // of the item or link row; none for the file's structure
    jet::RowId row = {};            // where it was read; {0, 0} for what is not there
};

}  // namespace stelvan::model
