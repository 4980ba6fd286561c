// The npm packages mdb-reader and secs4js as a second opinion on what stands in a file.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace stelvan::test {

/// Rows of all user tables, each as canonical JSON text of its table and columns.
using RowTexts = std::multiset<std::string>;

/// What the independent reader finds; nothing where Node or the package is absent. Throws when it
/// fails.
std::optional<RowTexts> readWithNode(const std::filesystem::path& file);

/// What an independent reader of SML finds: a line of JSON for each message, as sml.mjs says.
/// Nothing where Node or the package is absent. Throws when it fails.
std::optional<std::vector<std::string>> readSmlWithNode(const std::filesystem::path& sml);

/// What our own engine finds, in the same form.
RowTexts readWithEngine(const std::filesystem::path& file);

}  // namespace stelvan::test
