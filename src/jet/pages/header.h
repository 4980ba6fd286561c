// Page 0: what a file must show to be taken for a Jet 4 database, what it says about itself, and
// the commit slots.
//
// 128 bytes of the page are masked by a fixed stream of bytes; the same exclusive-or masks and
// unmasks.
//
//   OFFSET  SIZE  MEANING
//        0     4  00 01 00 00
//        4    15  name of the engine, and a zero
//     0x14     4  version of the format: 1 is Jet 4
//     0x18   128  masked:
//     0x18     4    record pointer to the map of free pages
//     0x1C     4    record pointer to a second map, which is always empty
//     0x20    16    definition pages of MSysObjects, MSysACEs, MSysQueries, MSysRelationships
//     0x3C     2    code page
//     0x3E     4    key of encrypted pages, 0 for plain ones
//     0x42    40    password, exclusive-or with the whole days of the creation date
//     0x6A     4    build of the engine that made the file
//     0x6E     2    locale of the file's order of texts, then its version at 0x71
//     0x72     8    creation date, days as in a DateTime
//     0x98     8  54 06 00 00, "4.0" and a zero
//    0xE00   512  commit slots, see disk/commit_slots.h
#pragma once

#include <array>
#include <cstdint>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

namespace header {
inline constexpr std::size_t kEngineName = 4;  // 15 characters and a zero
inline constexpr std::size_t kEngineNameSize = 15;
inline constexpr std::size_t kVersion = 0x14;
inline constexpr std::size_t kMasked = 0x18;  // exclusive-or with the RC4 stream of kMaskKey
inline constexpr std::size_t kMaskedSize = 128;
inline constexpr std::uint32_t kMaskKey = 0x6B39DAC7;
inline constexpr std::size_t kGlobalMap = 0x18;
inline constexpr std::size_t kSecondMap = 0x1C;
inline constexpr std::size_t kObjects = 0x20;
inline constexpr std::size_t kAccessEntries = 0x24;
inline constexpr std::size_t kQueries = 0x28;
inline constexpr std::size_t kRelationships = 0x2C;
inline constexpr std::size_t kCodePage = 0x3C;
inline constexpr std::size_t kEncryptionKey = 0x3E;
inline constexpr std::size_t kPassword = 0x42;
inline constexpr std::size_t kPasswordSize = 40;
inline constexpr std::size_t kEngineBuild = 0x6A;
inline constexpr std::size_t kSortLocale = 0x6E;
inline constexpr std::size_t kSortVersion = 0x71;
inline constexpr std::size_t kCreated = 0x72;
inline constexpr std::size_t kTail = 0x98;      // 54 06 00 00
inline constexpr std::size_t kTailText = 0x9C;  // "4.0" and a zero
}  // namespace header

/// What the header page says.
struct FileHeader {
    RecordPointer globalMap;
    std::uint16_t codePage = 0;
    std::uint32_t engineBuild = 0;
    std::uint16_t sortLocale = 0;
    std::uint8_t sortVersion = 0;
    double created = 0;  // days since 1899-12-30
};

/// Makes sure that the file is a whole Jet 4 database that can be read without a key. Throws
/// NotADatabase, UnsupportedVersion, Encrypted, PasswordProtected, Corrupt (with the page), Io.
/// Inside a scope.
FileHeader recognise(PageFile& file);

/// Masks or unmasks the masked area of a header page.
void maskHeader(WritablePageBytes header);

/// The password field of a database without password, before masking: it depends on the creation
/// date.
[[nodiscard]] std::uint32_t passwordMask(double created);

}  // namespace stelvan::jet
