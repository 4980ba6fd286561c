// Page 0: what a file must show to be taken for a Jet 4 database, what it says about itself, and
// the commit slots.
//
// 128 bytes of the page are masked by a fixed stream of bytes; the same exclusive-or masks and
// unmasks.
#pragma once

#include <array>
#include <cstdint>

#include "jet/bytes.h"
#include "jet/page_file.h"
#include "jet/value.h"

namespace stelvan::jet {

/// What the header page says.
struct FileHeader {
    RecordPointer globalMap;
    std::uint16_t codePage = 0;
    std::uint32_t engineBuild = 0;
    std::uint16_t sortLocale = 0;
    std::uint8_t sortVersion = 0;
    DateTime created;
};

/// Makes sure that the file is a whole Jet 4 database that can be read without a key. Throws
/// NotADatabase, UnsupportedVersion, Encrypted, PasswordProtected, Corrupt (with the page), Io.
/// Inside a scope.
FileHeader recognise(PageFile& file);

/// Masks or unmasks the masked area of a header page.
void maskHeader(WritablePageBytes header);

/// The password field of a database without password, before masking: it depends on the creation
/// date.
[[nodiscard]] std::uint32_t passwordMask(DateTime created);

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
