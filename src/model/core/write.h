// Making a file hold a model: what has to change is found out and judged first, then changed as one
// unit of work.
//
// Rows of the model are matched with those of the file: by where they were read (Row::id), where
// that row is still there, else by identity - an item by its identifier, a limit by variable and
// number, a link by owner, target and place, then by owner and target; of several the first with
// the first. What has no partner is erased or inserted; of the others only columns that differ are
// written. Parts that the model does not have, and columns that it does not have, stay as they are.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/core/model.h"
#include "model/core/progress.h"

namespace stelvan::model {

struct Written {
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t removed = 0;

    friend bool operator==(const Written&, const Written&) = default;
};

/// Names a row of the wanted model in messages, for whoever can say where it comes from
/// ("events.toml:12"); empty where nobody can.
using Whence = std::function<std::string(Part part, std::size_t row)>;

/// What a write does.
struct WritePlan {
    struct Change {
        std::size_t before = 0;            // position of the row in before[part].rows
        std::size_t after = 0;             // the same in after
        std::vector<std::size_t> columns;  // of the table, that differ
    };
    struct PartPlan {
        std::vector<std::size_t> removed;  // positions in before
        std::vector<std::size_t> added;    // positions in after
        std::vector<Change> changed;
    };

    Model before;  // as the file is
    Model after;   // as it will be: all columns of the file, values of their types; in the order of
                   // the wanted rows
    std::array<PartPlan, kParts> parts;
    Whence whence;

    [[nodiscard]] const PartPlan& operator[](Part part) const { return parts[indexOf(part)]; }
    /// Rows, links included.
    [[nodiscard]] Written rows() const;
};

/// Finds out what has to change, and whether it can. Throws Refusal with one line for each table,
/// column and value that the file cannot hold (type, size, a missing or empty value that a column
/// does not take, a doubled value in a unique index), each with table, id and column. Needs a
/// moment of the file that lasts until apply(): a unit of work, or a read scope.
[[nodiscard]] WritePlan planWrite(jet::Database& database, Model wanted, const Whence& whence = {});

/// Carries a plan out, in the open unit of work or one of its own. Throws Refusal for a row that
/// the file does not take, and jet::Error.
void apply(jet::Database& database, const WritePlan& plan, const Progress& progress = {});

/// Both, as one unit of work or within the one that is open; gives what was changed.
Written write(jet::Database& database, Model wanted, const Whence& whence = {},
              const Progress& progress = {});

}  // namespace stelvan::model
