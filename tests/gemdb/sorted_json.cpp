#include "tests/gemdb/sorted_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace stelvan::test {
namespace {

using Json = nlohmann::ordered_json;

void numbersAsDoubles(Json& value) {
    if (value.is_number()) value = value.get<double>();
    if (value.is_structured()) {
        for (Json& part : value) numbersAsDoubles(part);
    }
}

}  // namespace

std::vector<std::string> sortedJson(const std::vector<std::string>& lines) {
    std::vector<std::string> texts;
    for (const std::string& line : lines) {
        Json value = Json::parse(line);
        numbersAsDoubles(value);
        texts.push_back(value.dump());
    }
    std::ranges::sort(texts);
    return texts;
}

}  // namespace stelvan::test
