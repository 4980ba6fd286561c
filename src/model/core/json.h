// Texts and values as JSON spells them.
//
// A general JSON library cannot carry what stands in these files: Currency and Decimal with all
// their stored places, and texts that hold half a surrogate pair. Numbers come out as they are
// stored, texts as UTF-8, bytes as lower-case hexadecimal, dates as YYYY-MM-DDThh:mm:ss with .mmm
// where a fraction is stored. Control characters are escaped, so that a value is one line and does
// nothing to a terminal.
#pragma once

#include <string>
#include <string_view>

#include "jet/rows/value.h"

namespace stelvan::model {

/// `text` as a JSON string, quotes included; appended to `out`.
void appendJsonText(std::string& out, std::string_view text);

/// Any value of the file as a JSON value; appended to `out`.
void appendJsonValue(std::string& out, const jet::ValueView& value);

}  // namespace stelvan::model
