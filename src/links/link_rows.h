// The rows of a link table that belong to one owner: always replaced whole, never edited in place.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "db/operations.h"
#include "gem/queries.h"

namespace stelvan::links {

/// Link rows as they stand in the file: item and place, sorted.
using LinkRows = std::vector<std::pair<std::string, std::string>>;
[[nodiscard]] LinkRows linkRowsOf(const db::Operations& operations, const gem::LinkTable& table,
                                  const std::string& owner);

/// Another program's change of what a record owns is a change of the record: throws the failure of
/// one unless both are the same.
void requireUnchanged(const LinkRows& shown, const LinkRows& now);

/// Deletes the owner's rows and adds one for each item, numbered from 1. Throws RunTimeError. Runs
/// inside the caller's unit of work.
void replaceLinks(const db::Operations& operations, const gem::LinkTable& table,
                  const std::string& owner, const std::vector<std::string>& items);

}  // namespace stelvan::links
