// The catalogue against the definitions: names, access entries, relationships and what these
// promise.
#pragma once

#include "jet/catalog.h"
#include "jet/check_log.h"

namespace stelvan::jet {

void checkCatalog(PageFile& file, Catalog& catalog, CheckLog& log);

}  // namespace stelvan::jet
