// The structure of one index tree, checked page by page.
#pragma once

#include <vector>

#include "jet/check/check_log.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_page.h"
#include "jet/rows/column_facts.h"

namespace stelvan::jet {

struct CheckedTree {
    std::vector<PageNumber> pages;  // all that belong to the tree
    struct Entry {
        EntryBytes key;
        RowId row;
    };
    std::vector<Entry> entries;  // of all leaves, in order
};

/// Walks a whole tree and reports every page that breaks a rule: links, order, separators, masks,
/// prefixes, levels, empty pages. What can be read is given back.
[[nodiscard]] CheckedTree checkTree(PageFile& file, PageNumber root, PageNumber definition,
                                    CheckLog& log);

}  // namespace stelvan::jet
