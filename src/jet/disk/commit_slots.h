// The commit slots at the end of page 0: how those who share a file see that one has written.
//
//   OFFSET  SIZE  MEANING
//    0xE00     2  the slot of the one who writes alone: a count, or 0 while pages are being written
//    0xE02   510  the slots of the other 255 users of the lock file
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

namespace commit_slots {
inline constexpr std::size_t kOffset = 0xE00;
inline constexpr std::size_t kCount = 256;
}  // namespace commit_slots

/// One slot for each user of the lock file, the first for the one who writes alone: we do.
using CommitSlots = std::array<std::uint8_t, 512>;
[[nodiscard]] inline std::uint16_t ownSlot(const CommitSlots& slots) {
    return u16At(slots, 0);
}

/// The commit slot of the one who writes alone. Zero while pages are being written; else a count.
[[nodiscard]] std::uint16_t commitSlot(PageBytes header);
void setCommitSlot(WritablePageBytes header, std::uint16_t value);
/// The value that follows when a commit is done: never one of the low numbers, which have a
/// meaning.
[[nodiscard]] std::uint16_t nextCommitSlot(std::uint16_t value);

}  // namespace stelvan::jet
