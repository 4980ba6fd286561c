#include "gemdb/verbs.h"

namespace stelvan::gemdb {

void addPublishVerbs(CLI::App&, int&) {}

}  // namespace stelvan::gemdb
