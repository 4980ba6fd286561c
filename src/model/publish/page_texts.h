// Style sheets and scripts of the pages, made of the files in page/ when the program is built.
#pragma once

#include <string_view>

namespace stelvan::model {

extern const std::string_view kManualStyle;
extern const std::string_view kManualScript;
extern const std::string_view kChangesStyle;

}  // namespace stelvan::model
