// The npm package mdb-reader as a second opinion on what stands in a file.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>

namespace stelvan::test {

/// Rows of all user tables, each as canonical JSON text of its table and columns.
using RowTexts = std::multiset<std::string>;

/// What the independent reader finds; nothing where Node or the package is absent. Throws when it
/// fails.
std::optional<RowTexts> readWithNode(const std::filesystem::path& file);

/// What our own engine finds, in the same form.
RowTexts readWithEngine(const std::filesystem::path& file);

}  // namespace stelvan::test
