// The catalogue against the definitions: names, access entries, relationships and what these
// promise.
#pragma once

#include "jet/check/check_log.h"
#include "jet/disk/page_file.h"
#include "jet/tables/catalog.h"

namespace stelvan::jet {

void checkCatalog(PageFile& file, Catalog& catalog, CheckLog& log);

}  // namespace stelvan::jet
