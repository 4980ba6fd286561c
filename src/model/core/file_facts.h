// What a model's file says about itself, and who uses it: everything but its rows.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "jet/disk/file_locks.h"
#include "jet/disk/user_entry.h"
#include "jet/rows/value.h"

namespace stelvan::model {

/// What the file holds about its making.
struct Making {
    std::uint32_t engineBuild = 0;
    std::optional<jet::DateTime> created;  // as the catalogue has it
    std::string accessVersion;             // "09.50"; empty where no Access program has opened it
};

struct FileFacts {
    std::uint64_t bytes = 0;
    std::vector<jet::User> users;  // programs of the Access family that are inside
    jet::Use use = jet::Use::None;
    /// A program died while it wrote: whoever opens the file next puts back what it had changed.
    bool journalWaits = false;
    /// Nothing where a journal waits: looking would put the file right.
    std::optional<Making> making;
};

/// Looks, and changes nothing. Throws jet::Error for what is no database, or not there.
[[nodiscard]] FileFacts factsOf(const std::filesystem::path& file);

/// "Access 2002-2003" for "09.50"; the version itself where it is none that is known.
[[nodiscard]] std::string programOf(const std::string& accessVersion);

}  // namespace stelvan::model
