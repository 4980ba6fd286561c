// Style sheet and script of the manual, made of the files in page/ when the program is built.
#pragma once

#include <string_view>

namespace stelvan::model {

extern const std::string_view kManualStyle;
extern const std::string_view kManualScript;

}  // namespace stelvan::model
