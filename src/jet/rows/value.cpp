#include "jet/rows/value.h"

#include <type_traits>

namespace stelvan::jet {

Value toValue(const ValueView& view) {
    return std::visit(
        [](const auto& held) -> Value {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::string_view>) {
                return std::string(held);
            } else if constexpr (std::is_same_v<Held, std::span<const std::uint8_t>>) {
                return Blob(held.begin(), held.end());
            } else {
                return held;
            }
        },
        view);
}

ValueView toView(const Value& value) {
    return std::visit(
        [](const auto& held) -> ValueView {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::string>) {
                return std::string_view(held);
            } else if constexpr (std::is_same_v<Held, Blob>) {
                return std::span<const std::uint8_t>(held);
            } else {
                return held;
            }
        },
        value);
}

}  // namespace stelvan::jet
