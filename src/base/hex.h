// Bytes and identifiers as hexadecimal digits.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stelvan::base {

/// The 16 bytes of an identifier, in the order in which they are shown.
using GuidBytes = std::array<std::uint8_t, 16>;

/// Two lower-case digits for each byte.
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);

/// Reads that form, the digits in either case; nothing for any other text.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> parseHex(std::string_view text);

/// "{AABBCCDD-EEFF-GGHH-IIJJ-KKLLMMNNOOPP}", in upper case.
[[nodiscard]] std::string guidText(const GuidBytes& guid);

/// Reads that form, the digits in either case; nothing for any other text.
[[nodiscard]] std::optional<GuidBytes> parseGuid(std::string_view text);

}  // namespace stelvan::base
