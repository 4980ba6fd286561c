// Pages in memory, under the name that the tests use.
#pragma once

#include "jet/disk/memory_pages.h"

namespace stelvan::test {
using jet::MemoryPages;
}  // namespace stelvan::test
