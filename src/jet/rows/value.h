// Values of the Access column types, as the rest of the program sees them.
//
// Text is UTF-8; a UTF-16 surrogate without its partner is carried as the three bytes of its code
// unit (generalised UTF-8), so that every stored text survives reading and writing back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "jet/disk/bytes.h"

namespace stelvan::jet {

/// Type codes as they stand in a table definition.
enum class ColumnType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,  // 16 bits
    Long = 4,     // 32 bits
    Money = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
    FixedBinary = 17
};

/// Currency: units of 1/10000.
struct Money {
    static constexpr std::size_t kPlaces = 4;
    std::int64_t scaled = 0;
    friend auto operator<=>(const Money&, const Money&) = default;
};

/// Days since 1899-12-30 00:00; the absolute fraction is the time of day, also before that date.
struct DateTime {
    double days = 0;
    friend auto operator<=>(const DateTime&, const DateTime&) = default;
};

/// Decimal: magnitude / 10^scale, most significant word first.
struct Numeric {
    bool negative = false;
    std::uint8_t scale = 0;
    std::array<std::uint32_t, 4> magnitude{};
    friend bool operator==(const Numeric&, const Numeric&) = default;
};

/// The 16 bytes in display order.
struct Guid {
    std::array<std::uint8_t, 16> bytes{};
    friend auto operator<=>(const Guid&, const Guid&) = default;
};

using Null = std::monostate;

/// Byte, Integer and Long are std::int32_t; Single is float; Text and Memo are std::string;
/// Binary, Ole and FixedBinary are Blob.
using Value = std::variant<Null, bool, std::int32_t, float, double, Money, DateTime, Numeric, Guid,
                           std::string, Blob>;

/// The same without ownership; texts and bytes live as long as their producer says.
using ValueView = std::variant<Null, bool, std::int32_t, float, double, Money, DateTime, Numeric,
                               Guid, std::string_view, std::span<const std::uint8_t>>;

[[nodiscard]] inline bool isNull(const Value& value) {
    return std::holds_alternative<Null>(value);
}
[[nodiscard]] inline bool isNull(const ValueView& value) {
    return std::holds_alternative<Null>(value);
}

/// An owning copy.
[[nodiscard]] Value toValue(const ValueView& view);
/// A view that lives as long as `value`.
[[nodiscard]] ValueView toView(const Value& value);

}  // namespace stelvan::jet
