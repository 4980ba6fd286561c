// JSON lines made comparable.
#pragma once

#include <string>
#include <vector>

namespace stelvan::test {

/// Every line as JSON, numbers as doubles, printed in one form and sorted: equal texts are equal
/// contents.
[[nodiscard]] std::vector<std::string> sortedJson(const std::vector<std::string>& lines);

}  // namespace stelvan::test
