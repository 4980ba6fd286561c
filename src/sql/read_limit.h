// How long a SELECT may look at the file before writers would lose their patience with it.
//
// Asked at every step that a statement takes; the clock is looked at now and then. Without a limit
// it is never spent.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace stelvan::sql {

class ReadLimit {
public:
    /// What check() throws.
    struct Spent {};

    ReadLimit() = default;
    explicit ReadLimit(std::chrono::milliseconds most) : end_(Clock::now() + most) {}

    [[nodiscard]] bool spent() const { return end_ && Clock::now() >= *end_; }

    /// For loops over rows. Throws Spent.
    void check() {
        constexpr std::uint32_t kRowsPerLook = 256;
        if (++rows_ % kRowsPerLook == 0 && spent()) throw Spent{};
    }

private:
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> end_;
    std::uint32_t rows_ = 0;
};

}  // namespace stelvan::sql
