// A long value: its reference in the first bytes of the input, the pages that it may lead to behind
// them.
#include "jet/pages/long_value.h"
#include "jet/rows/row_codec.h"
#include "tests/fuzz/support/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stelvan;
    constexpr std::size_t kReference = 64;
    const std::size_t head = std::min(size, kReference);
    test::MemoryPages pages = fuzz::pagesOf(data + head, size - head);
    fuzz::mayBeRefused([&] {
        jet::Arena arena;
        const jet::LongValueReference reference = jet::readReference(jet::Bytes(data, head));
        const jet::Bytes bytes = jet::readLongValue(pages, reference, arena);
        (void)jet::decodeTextTo(arena, bytes);
    });
    return 0;
}
