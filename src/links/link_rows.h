// The rows of a link table that belong to one owner: always replaced whole, never edited in place.
#pragma once

#include <string>
#include <vector>

#include "db/operations.h"

namespace stelvan::links {

struct LinkTable {
    const char* name;
    const char* owner;
    const char* item;
    const char* order;
};

/// Deletes the owner's rows and adds one for each item, numbered from 1. False when the rows could
/// not be opened (reported); other failures are thrown. Runs inside the caller's unit of work.
bool replaceLinks(db::Operations& operations, const LinkTable& table, const std::string& owner,
                  const std::vector<std::string>& items);

}  // namespace stelvan::links
