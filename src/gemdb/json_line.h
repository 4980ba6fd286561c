// One JSON object on one line, written member by member; texts and values as model/core/json.h
// spells them.
#pragma once

#include <string>
#include <string_view>

#include "jet/rows/value.h"
#include "model/core/json.h"

namespace stelvan::gemdb {

using model::appendJsonText;
using model::appendJsonValue;

/// Writes `{"a":1,"b":[...]}` in the order of the calls; commas are its business, nesting the
/// caller's.
class JsonLine {
public:
    JsonLine& member(std::string_view name);  // "name":  - a value or an opening follows
    JsonLine& text(std::string_view value);
    JsonLine& number(long long value);
    JsonLine& flag(bool value);
    JsonLine& value(const jet::ValueView& value);
    JsonLine& open(char bracket);   // '{' or '['
    JsonLine& close(char bracket);  // '}' or ']'

    /// The line so far, with its line break; the object is empty afterwards and may be used again.
    [[nodiscard]] std::string take();

private:
    void separate();

    std::string out_;
    bool needsComma_ = false;
};

}  // namespace stelvan::gemdb
