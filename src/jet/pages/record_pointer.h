// A record pointer as it stands outside of indexes: four bytes, the slot in the lowest, the page
// above.
#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/disk/bytes.h"

namespace stelvan::jet {

struct RecordPointer {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;
    friend bool operator==(const RecordPointer&, const RecordPointer&) = default;

    [[nodiscard]] bool none() const { return page == 0 && slot == 0; }
    [[nodiscard]] std::uint32_t packed() const { return page << 8 | slot; }
    static RecordPointer unpack(std::uint32_t packed) {
        return {packed >> 8, static_cast<std::uint8_t>(packed & 0xFF)};
    }
};

[[nodiscard]] inline RecordPointer pointerAt(Bytes bytes, std::size_t offset) {
    return RecordPointer::unpack(u32At(bytes, offset));
}
inline void putPointer(WritableBytes bytes, std::size_t offset, RecordPointer pointer) {
    putU32(bytes, offset, pointer.packed());
}

}  // namespace stelvan::jet
