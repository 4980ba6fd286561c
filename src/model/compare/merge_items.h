// The rows of three versions of a part side by side.
#pragma once

#include <vector>

#include "model/compare/identity.h"
#include "model/compare/merge_lists.h"
#include "model/core/model.h"

namespace stelvan::model {

/// One item in each version; null where that has none.
struct ItemVersions {
    Key id;
    Key place;
    const Row* base = nullptr;
    const Row* ours = nullptr;
    const Row* theirs = nullptr;
};

/// Every item of any version. What both sides added under one key is one item.
[[nodiscard]] std::vector<ItemVersions> itemVersions(Part part, const Model& base,
                                                     const Model& ours, const Model& theirs);

/// A column by where it stands in each version.
struct ColumnVersions {
    std::string name;  // as ours spells it, if it has it
    std::optional<std::size_t> base, ours, theirs;
};

/// Every column of ours, then what only theirs has.
[[nodiscard]] std::vector<ColumnVersions> columnVersions(const Table& base, const Table& ours,
                                                         const Table& theirs);

/// What each version says in one place.
struct ValueVersions {
    const jet::Value& base;
    const jet::Value& ours;
    const jet::Value& theirs;
};

struct Decision {
    bool conflict;
    bool takeTheirs;
};

/// The side that changed the value is taken, ours where both agree. Of what the base does not have
/// (`known` is false), the side whose file has the column.
[[nodiscard]] Decision decide(const ValueVersions& values, bool known, const ColumnVersions& column,
                              Side decides);

/// Gives a version the columns and the table that only the base has, with what the base says, so
/// that what a file cannot hold is no change of its side.
void addMissing(Part part, Table& version, const Table& base);

}  // namespace stelvan::model
