// Page 0: what a file must show to be taken for a Jet 4 database, what it says about itself, and
// the commit slots.
//
// 128 bytes of the page are masked by a fixed stream of bytes; the same exclusive-or masks and
// unmasks.
#pragma once

#include <array>
#include <cstdint>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

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
