// A table's definition over one or several pages: decoded, or refused.
#include "jet/tables/table_def.h"
#include "tests/fuzz/support/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stelvan;
    test::MemoryPages pages = fuzz::pagesOf(data, size);
    fuzz::mayBeRefused([&] { (void)jet::readTableDef(pages, 1); });
    return 0;
}
