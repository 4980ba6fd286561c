// Files that must be turned away or survived, made from a whole one: each lies in a folder of its
// own under the only name that the program opens.
#pragma once

#include <filesystem>

namespace stelvan::data::test {

/// Writes `folder`/KIND/gem.mdb for every kind, from the model `whole`.
void writeDamagedFiles(const std::filesystem::path& whole, const std::filesystem::path& folder);

}  // namespace stelvan::data::test
