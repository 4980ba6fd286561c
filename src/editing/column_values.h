// What a save writes: the columns of each category in their order, each with the rule that turns
// the text of its field into the value stored.
#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

#include "db/value_text.h"
#include "form/frames.h"

namespace stelvan::editing {

struct ColumnValue {
    const char* column;
    db::Value value;
};

/// The columns of events, alarms, reports and variables; settings store what their inputs say.
[[nodiscard]] std::vector<ColumnValue> columnValues(const form::MainForm& form,
                                                    std::int16_t category);

/// The chosen format, trimmed and in upper case.
[[nodiscard]] QString formatOf(const form::VarFrame& frame);

}  // namespace stelvan::editing
