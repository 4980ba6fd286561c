// The pages of one index: walked from end to end, and searched, without looping and without leaving
// them.
#include "jet/index/index_tree.h"
#include "tests/fuzz/support/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stelvan;
    constexpr std::size_t kKey = 8;
    const std::size_t head = std::min(size, kKey);
    const jet::Bytes key(data, head);
    test::MemoryPages pages = fuzz::pagesOf(data + head, size - head);
    jet::IndexTree tree(pages, 1, 2);
    fuzz::mayBeRefused([&] {
        for (jet::TreeCursor entries = tree.all(); entries.next();) (void)entries.rowId();
    });
    fuzz::mayBeRefused([&] {
        for (jet::TreeCursor entries = tree.withPrefix(key); entries.next();) (void)entries.key();
    });
    fuzz::mayBeRefused([&] { (void)tree.find(key); });
    return 0;
}
