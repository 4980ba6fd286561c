// One JSON object on one line, written member by member.
//
// A general JSON library cannot carry what stands in these files: Currency and Decimal with all
// their stored places, and texts that hold half a surrogate pair. Numbers come out as they are
// stored, texts as UTF-8, bytes as lower-case hexadecimal, dates as YYYY-MM-DDThh:mm:ss with .mmm
// where a fraction is stored.
#pragma once

#include <string>
#include <string_view>

#include "jet/rows/value.h"

namespace stelvan::gemdb {

/// `text` as a JSON string, quotes included; appended to `out`.
void appendJsonText(std::string& out, std::string_view text);

/// Any value of the file as a JSON value; appended to `out`.
void appendJsonValue(std::string& out, const jet::ValueView& value);

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
