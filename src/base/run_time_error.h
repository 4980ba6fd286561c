// The one way to fail: a number, as the user knows it from the error box, and a text.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace stelvan::base {

class RunTimeError : public std::runtime_error {
public:
    RunTimeError(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    /// Run-time failures are small (6, 9, 13, 91, 94), record-set failures have the short form
    /// (3021, 3265), provider failures are the full signed 32-bit number (-2147467259).
    [[nodiscard]] std::int32_t number() const { return number_; }

private:
    std::int32_t number_;
};

/// The run-time failures that the program's own code raises, with their texts.
[[nodiscard]] RunTimeError overflow();             // 6
[[nodiscard]] RunTimeError subscriptOutOfRange();  // 9
[[nodiscard]] RunTimeError typeMismatch();         // 13
[[nodiscard]] RunTimeError objectNotSet();         // 91
[[nodiscard]] RunTimeError invalidUseOfNull();     // 94

}  // namespace stelvan::base
