// The rules of links: what a report must carry, how an event sends and a list holds, what may join.
#pragma once

#include <string_view>

namespace stelvan::gem {

/// A report must carry at least one variable: under which caption that is listed, and how.
inline constexpr std::string_view kReportListCaption = "Report Variable List";
inline constexpr std::string_view kMustContainItem = "Must contain item.";

}  // namespace stelvan::gem
