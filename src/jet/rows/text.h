// Stored text and UTF-8.
//
// The file stores UTF-16LE, or "compressed" text: FF FE and then one byte per character, with zero
// bytes switching to two-byte units and back. A surrogate without its partner travels as three
// bytes of UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "jet/disk/bytes.h"
#include "jet/rows/value.h"

namespace stelvan::jet {

/// Stored text that is UTF-8 as it stands (compressed, all ASCII): nothing needs to be copied.
[[nodiscard]] std::optional<std::string_view> textInPlace(Bytes stored);

/// The most bytes that decodeText can write.
[[nodiscard]] constexpr std::size_t decodedBound(std::size_t storedSize) {
    return 2 * storedSize;
}

/// Writes the text as UTF-8 to `out` (room for decodedBound) and gives its end. Throws Corrupt
/// where a unit is cut in half.
[[nodiscard]] char* decodeText(Bytes stored, char* out);
[[nodiscard]] std::string decodeText(Bytes stored);

/// Appends a text as the engine stores it: compressed if `compress` allows, it has at least three
/// characters and all of them are U+0001 to U+00FF; otherwise UTF-16LE.
void encodeText(std::u16string_view text, bool compress, Blob& out);

/// The same for a text that is all ASCII; false, with nothing appended, for any other.
[[nodiscard]] bool encodeAscii(std::string_view text, bool compress, Blob& out);

/// Names of tables and columns: equal but for the case of letters.
[[nodiscard]] bool sameName(std::string_view left, std::string_view right);
/// A text that is equal for names that are the same, and sorts as the names do.
[[nodiscard]] std::string foldName(std::string_view name);

}  // namespace stelvan::jet
