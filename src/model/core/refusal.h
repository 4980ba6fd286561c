// Input that cannot be taken: every fault of it at once, one line each.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace stelvan::model {

/// Thrown before anything is written. Each line says what, where and what to do.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const std::string& line) : Refusal(std::vector{line}) {}
    /// At least one line.
    explicit Refusal(std::vector<std::string> lines)
        : std::runtime_error(lines.front()), lines_(std::move(lines)) {}

    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

}  // namespace stelvan::model
