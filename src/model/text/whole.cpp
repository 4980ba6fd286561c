#include "model/text/whole.h"

#include <string>
#include <utility>

#include "jet/rows/value_text.h"
#include "model/core/values.h"

namespace stelvan::model {

std::optional<std::int64_t> wholeNumberAsWritten(const jet::Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    const auto number = wholeNumber(value);
    return number && jet::textOf(value) == std::to_string(*number) ? number : std::nullopt;
}

jet::Value wholeValue(std::int64_t number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    const bool negative = number < 0;
    const auto size =
        negative ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
    constexpr int kWord = 32;
    return jet::Numeric{
        negative,
        0,
        {0, 0, static_cast<std::uint32_t>(size >> kWord), static_cast<std::uint32_t>(size)}};
}

}  // namespace stelvan::model
