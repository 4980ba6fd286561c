// The messages that a model stands for, made from the rows of its file alone: what an independent
// reader must find in the SML of it. Nothing of the program's own publishing is used.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace stelvan::test {

/// "S2F35 W L(U4:1 L(L(U4:101 L(U4:7))))", one a message. Texts are hexadecimal digits, fractions
/// as %.9g or %.17g, empty items "U1:".
[[nodiscard]] std::vector<std::string> expectedMessages(const std::filesystem::path& file);

}  // namespace stelvan::test
