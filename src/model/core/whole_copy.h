// Copying a file whole or not at all, so that it is on the medium when the call returns.
#pragma once

#include <cstdint>
#include <filesystem>

namespace stelvan::model {

/// Makes `to` a copy of `from`; what stood there is replaced in one step, or stays where anything
/// fails. `permissions` are the new file's, the usual ones for 0. Keep a database unchanged for
/// the time (Database::beginRead, UnitOfWork), so that the copy is of one moment. Throws jet::Error
/// with the file's name.
void copyWhole(const std::filesystem::path& from, const std::filesystem::path& to,
               std::uint32_t permissions = 0);

/// Removes what copies into a folder left there whose program died on the way.
void removeDrafts(const std::filesystem::path& folder);

/// Whether two files hold the same bytes. Throws jet::Error.
[[nodiscard]] bool sameContent(const std::filesystem::path& one,
                               const std::filesystem::path& other);

}  // namespace stelvan::model
