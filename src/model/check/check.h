// Whether a whole model is sound: every rule that the editor keeps for a record, and those that
// hold between records, on all of them at once.
//
// Nothing is changed (fix.h does). The functions keep nothing between calls and may run in any
// thread.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "model/check/finding.h"
#include "model/core/model.h"
#include "model/core/progress.h"

namespace stelvan::model {

struct CheckOptions {
    Progress progress = {};  // what it throws ends the check
};

/// All findings, by part, identifier and rule. Paths in settings are looked for on this machine.
[[nodiscard]] std::vector<Finding> check(const Model& model, const CheckOptions& options = {});

/// The file's structure (jet/check) as findings of the rule "structure", by page as found; notes
/// are what the Access engine itself leaves behind, faults too where `strict`. Throws what opening
/// the file throws.
[[nodiscard]] std::vector<Finding> checkStructure(const std::filesystem::path& file,
                                                  bool strict = false);

struct FileCheckOptions {
    bool structure = true;
    bool model = true;
    bool strict = false;
    Progress progress = {};
};

/// Both of a file: faults of the structure first; one that is too damaged to be read as a model has
/// those alone. Throws what opening and reading throw.
[[nodiscard]] std::vector<Finding> checkFile(const std::filesystem::path& file,
                                             const FileCheckOptions& options = {});
/// The same of an open file, which is only read.
[[nodiscard]] std::vector<Finding> checkFile(jet::Database& database,
                                             const FileCheckOptions& options = {});

/// How many findings have a severity; whether any is a warning or worse.
[[nodiscard]] std::size_t count(const std::vector<Finding>& findings, Severity severity);
[[nodiscard]] bool needsAction(const std::vector<Finding>& findings);
/// "1 error, 2 warnings, 0 notes".
[[nodiscard]] std::string summaryOf(const std::vector<Finding>& findings);

}  // namespace stelvan::model
