// Checks a database file against every rule of its format that can be checked.
//
// Every page has exactly one owner, every map, counter and free-space field is exact, every row can
// be decoded, every long value is whole and has one owner, every index is sound and holds exactly
// the entries that the rows give, catalogue and definitions agree, and no enforced relationship is
// broken. The file is only read.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "jet/check/check_log.h"
#include "jet/disk/page_file.h"

namespace stelvan::jet {

struct CheckOptions {
    /// Deviations that the Access engine leaves behind count as faults: for files of our own
    /// making.
    bool strict = false;
};

/// All findings in the order in which they were made; none means that the file is sound. Throws
/// what opening a database throws for a file that is none.
[[nodiscard]] std::vector<Finding> check(const std::filesystem::path& path,
                                         CheckOptions options = {});

/// The same for pages that are open already, changes of the open unit of work included.
[[nodiscard]] std::vector<Finding> check(std::shared_ptr<PageFile> file, CheckOptions options = {});

/// Whether a finding is more than a note.
[[nodiscard]] bool anyFault(const std::vector<Finding>& findings);

}  // namespace stelvan::jet
