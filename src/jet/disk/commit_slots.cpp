#include "jet/disk/commit_slots.h"

#include <algorithm>

namespace stelvan::jet {

std::uint16_t commitSlot(PageBytes page) {
    return u16At(page, commit_slots::kOffset);
}

void setCommitSlot(WritablePageBytes page, std::uint16_t value) {
    putU16(page, commit_slots::kOffset, value);
}

std::uint16_t nextCommitSlot(std::uint16_t value) {
    constexpr std::uint16_t kLowest = 0x0101;
    const auto next = static_cast<std::uint16_t>(value + 1);
    return std::max(next, kLowest);
}

}  // namespace stelvan::jet
