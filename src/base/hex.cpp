#include "base/hex.h"

#include "base/text.h"

namespace stelvan::base {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::string_view kGuidForm = "{00000000-0000-0000-0000-000000000000}";

/// Nothing for what is no hexadecimal digit.
std::optional<std::uint8_t> digitOf(char c) {
    const std::size_t value = kDigits.find(upperCase(c));
    if (value == std::string_view::npos) return std::nullopt;
    return static_cast<std::uint8_t>(value);
}

}  // namespace

std::string hexText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kLowerDigits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += kLowerDigits[byte >> 4];
        text += kLowerDigits[byte & 0xF];
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> parseHex(std::string_view text) {
    if (text.size() % 2 != 0) return std::nullopt;
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const auto high = digitOf(text[at]);
        const auto low = digitOf(text[at + 1]);
        if (!high || !low) return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return bytes;
}

std::string guidText(const GuidBytes& guid) {
    std::string text(kGuidForm);
    std::size_t digit = 0;
    for (char& c : text) {
        if (c != '0') continue;
        const std::uint8_t byte = guid[digit / 2];
        c = kDigits[digit++ % 2 == 0 ? byte >> 4 : byte & 0xF];
    }
    return text;
}

std::optional<GuidBytes> parseGuid(std::string_view text) {
    if (text.size() != kGuidForm.size()) return std::nullopt;
    GuidBytes guid{};
    std::size_t digit = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (kGuidForm[at] != '0') {
            if (text[at] != kGuidForm[at]) return std::nullopt;
            continue;
        }
        const auto value = digitOf(text[at]);
        if (!value) return std::nullopt;
        std::uint8_t& byte = guid[digit++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | *value);
    }
    return guid;
}

}  // namespace stelvan::base
