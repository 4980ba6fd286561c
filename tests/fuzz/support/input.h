// What the fuzz targets share: the input as pages of a file in memory, and the one failure that is
// allowed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/disk/error.h"
#include "tests/jet/memory_pages.h"

namespace stelvan::fuzz {

/// Page 0 is empty, the input begins on page 1; the last page is filled up with zeros.
inline test::MemoryPages pagesOf(const std::uint8_t* data, std::size_t size) {
    const std::size_t pages = (size + jet::kPageSize - 1) / jet::kPageSize + 1;
    std::vector<std::uint8_t> file(pages * jet::kPageSize);
    std::copy(data, data + size, file.begin() + jet::kPageSize);
    return test::MemoryPages(file);
}

/// Damaged input may be refused, and in no other way than with the engine's own error.
template <typename Body>
void mayBeRefused(const Body& body) {
    try {
        body();
    } catch (const jet::Error&) {
    }
}

}  // namespace stelvan::fuzz
