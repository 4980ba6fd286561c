// What a page is: 4096 bytes with a number, of which the first says what kind it is.
//
//   OFFSET  SIZE  MEANING
//        0     1  the type of the page (PageType)
//        1     1  01 on every page in use
//        2  4094  as the type says; the room that decodes it draws it
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace stelvan::jet {

inline constexpr std::size_t kPageSize = 4096;
using PageNumber = std::uint32_t;
using PageBytes = std::span<const std::uint8_t, kPageSize>;
using WritablePageBytes = std::span<std::uint8_t, kPageSize>;

/// The first byte of a page. Only meaningful on pages that the global map calls used.
enum class PageType : std::uint8_t {
    Header = 0x00,
    Data = 0x01,
    Definition = 0x02,
    IndexNode = 0x03,
    IndexLeaf = 0x04,
    UsageBitmap = 0x05,
    FreedDefinition = 0x08,
    FreedData = 0x09
};

/// The second byte of every page in use.
inline constexpr std::uint8_t kPageInUse = 0x01;

/// A file of 2 GB is full.
inline constexpr PageNumber kMaxPages = 524288;

enum class Access { ReadOnly, ReadWrite };

}  // namespace stelvan::jet
