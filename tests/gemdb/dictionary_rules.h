// The rules of an equipment data dictionary, edition 0225, as far as its schema is publicly known:
// what stands in what, in which order and how often, types, lengths, what is unique, what must
// exist. And one of our own: nothing refers to what the dictionary does not hold.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace stelvan::test {

/// A line for each breach; none for a dictionary that keeps all rules.
[[nodiscard]] std::vector<std::string> breachesOf(const pugi::xml_document& dictionary);

}  // namespace stelvan::test
