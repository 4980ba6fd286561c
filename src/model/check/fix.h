// Mends what has one right answer: links to nothing and doubled ones go, places count from 1 again,
// children of what does not exist are released. All else is for the user to decide.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "jet/database.h"
#include "model/core/model.h"

namespace stelvan::model {

/// One thing that is mended, with all that it changes in the file.
struct Fix {
    struct NewValue {
        jet::RowId row;
        std::string column;
        jet::Value value;
    };
    std::string rule;   // of the finding that it answers
    std::string table;  // as Finding has it, like the three that follow
    jet::Value id;
    std::string name;
    std::string text;  // "removed the link to report 999, which does not exist"
    std::vector<jet::RowId> erased;
    std::vector<NewValue> set;
};

/// What there is to mend, by part and identifier; the model must have been read from a file.
/// Throws Refusal where tables or columns are missing: all links would seem to lead nowhere.
[[nodiscard]] std::vector<Fix> fixesFor(const Model& model);

struct FixResult {
    std::vector<Fix> fixes;
    std::filesystem::path copy;  // of the file as it was; empty where there was nothing to mend
};

/// Mends the file in one unit of work, after it was copied beside itself under a name that is free
/// ("gem.mdb.before-fix-20260314-091500"). Nothing is written where there is nothing to mend.
/// Throws Refusal for a file that is damaged or lacks tables, jet::Error and std::runtime_error;
/// the file is then as before.
FixResult fix(const std::filesystem::path& file);

}  // namespace stelvan::model
