// Whether a whole model is sound: every rule that the editor keeps for a record, and those that
// hold between records, on all of them at once.
//
// Nothing is changed (fix.h does). The functions keep nothing between calls and may run in any
// thread.
#pragma once

#include <filesystem>
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

/// How many findings have a severity; whether any is a warning or worse.
[[nodiscard]] std::size_t count(const std::vector<Finding>& findings, Severity severity);
[[nodiscard]] bool needsAction(const std::vector<Finding>& findings);

}  // namespace stelvan::model
