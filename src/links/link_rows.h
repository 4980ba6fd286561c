// The rows of a link table that belong to one owner: always replaced whole, never edited in place.
#pragma once

#include <string>
#include <vector>

#include "db/operations.h"
#include "gem/queries.h"

namespace stelvan::links {

/// Deletes the owner's rows and adds one for each item, numbered from 1. Throws RunTimeError. Runs
/// inside the caller's unit of work.
void replaceLinks(const db::Operations& operations, const gem::LinkTable& table,
                  const std::string& owner, const std::vector<std::string>& items);

}  // namespace stelvan::links
