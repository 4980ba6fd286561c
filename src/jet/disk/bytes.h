// Numbers in byte arrays: little-endian unless the name says otherwise, never outside the array.
//
// An access beyond the end throws Corrupt without a page; whoever knows the page names it (see
// atPage).
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "jet/disk/error.h"

namespace stelvan::jet {

static_assert(std::endian::native == std::endian::little,
              "loads and stores copy bytes as they stand");

using Bytes = std::span<const std::uint8_t>;
using WritableBytes = std::span<std::uint8_t>;
using Blob = std::vector<std::uint8_t>;

[[noreturn]] inline void throwBeyondEnd() {
    throw Error(ErrorKind::Corrupt, "A structure of the database file reaches beyond its end.");
}

[[noreturn]] inline void throwCorrupt(std::uint32_t page, const std::string& what) {
    throw Error(ErrorKind::Corrupt,
                "Page " + std::to_string(page) + " of the database is damaged: " + what, page);
}

/// The `size` bytes at `offset`.
[[nodiscard]] inline Bytes bytesAt(Bytes bytes, std::size_t offset, std::size_t size) {
    if (offset > bytes.size() || size > bytes.size() - offset) throwBeyondEnd();
    return bytes.subspan(offset, size);
}
[[nodiscard]] inline WritableBytes bytesAt(WritableBytes bytes, std::size_t offset,
                                           std::size_t size) {
    if (offset > bytes.size() || size > bytes.size() - offset) throwBeyondEnd();
    return bytes.subspan(offset, size);
}

template <typename Number>
[[nodiscard]] Number loadAt(Bytes bytes, std::size_t offset) {
    if (bytes.size() < sizeof(Number) || offset > bytes.size() - sizeof(Number)) throwBeyondEnd();
    Number number;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

[[nodiscard]] inline std::uint8_t u8At(Bytes bytes, std::size_t offset) {
    return loadAt<std::uint8_t>(bytes, offset);
}
[[nodiscard]] inline std::uint16_t u16At(Bytes bytes, std::size_t offset) {
    return loadAt<std::uint16_t>(bytes, offset);
}
[[nodiscard]] inline std::uint32_t u32At(Bytes bytes, std::size_t offset) {
    return loadAt<std::uint32_t>(bytes, offset);
}
[[nodiscard]] inline std::int32_t i32At(Bytes bytes, std::size_t offset) {
    return loadAt<std::int32_t>(bytes, offset);
}
[[nodiscard]] inline std::uint32_t bigU24At(Bytes bytes, std::size_t offset) {
    const Bytes b = bytesAt(bytes, offset, 3);
    return static_cast<std::uint32_t>(b[0]) << 16 | static_cast<std::uint32_t>(b[1]) << 8 | b[2];
}
[[nodiscard]] inline std::uint32_t bigU32At(Bytes bytes, std::size_t offset) {
    return __builtin_bswap32(u32At(bytes, offset));
}

template <typename Number>
void storeAt(WritableBytes bytes, std::size_t offset, std::type_identity_t<Number> number) {
    if (bytes.size() < sizeof(Number) || offset > bytes.size() - sizeof(Number)) throwBeyondEnd();
    std::memcpy(bytes.data() + offset, &number, sizeof number);
}

inline void putU8(WritableBytes bytes, std::size_t offset, std::uint8_t number) {
    storeAt<std::uint8_t>(bytes, offset, number);
}
inline void putU16(WritableBytes bytes, std::size_t offset, std::uint16_t number) {
    storeAt<std::uint16_t>(bytes, offset, number);
}
inline void putU32(WritableBytes bytes, std::size_t offset, std::uint32_t number) {
    storeAt<std::uint32_t>(bytes, offset, number);
}

/// Runs a decoder over bytes of `page`, so that a fault it finds without knowing the page names it.
template <typename Decoder>
decltype(auto) atPage(std::uint32_t page, Decoder&& decoder) {
    try {
        return std::forward<Decoder>(decoder)();
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Corrupt || error.page().has_value()) throw;
        throwCorrupt(page, error.what());
    }
}

}  // namespace stelvan::jet
