// Where texts go that may be too long for memory: piece by piece, to a file or to the screen.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace stelvan::model {

/// Takes the next piece; throws where it cannot.
using Sink = std::function<void(std::string_view)>;

/// Writes a file whole or not at all: `write` fills one beside it, which then takes its name, so
/// that whatever fails leaves what stood there. Throws std::system_error or std::runtime_error with
/// the file's name, and what `write` throws.
void writeWhole(const std::filesystem::path& file, const std::function<void(const Sink&)>& write);

/// The whole content of a file. Throws std::runtime_error with its name.
[[nodiscard]] std::string readWhole(const std::filesystem::path& file);

}  // namespace stelvan::model
