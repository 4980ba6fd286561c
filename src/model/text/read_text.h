// A model from a folder of texts, as exportText writes them and people edit them. See layout.h.
//
// Values have the types that the texts give them; no file is asked what its columns can hold.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "model/core/model.h"
#include "model/core/progress.h"

namespace stelvan::model {

/// A model and where in the texts it stands.
struct ModelText {
    std::filesystem::path folder;
    Model model;                                           // rows in their order
    std::array<std::vector<std::uint32_t>, kParts> lines;  // of each row

    /// "folder/events.toml:12".
    [[nodiscard]] std::string where(Part part, std::size_t row) const;
};

/// Reads a folder; one file at a time is in memory. Each must be there but that of the limits.
/// Throws Refusal with all that is wrong (file, line, item), and std::runtime_error for what cannot
/// be read.
[[nodiscard]] ModelText readText(const std::filesystem::path& folder,
                                 const Progress& progress = {});

}  // namespace stelvan::model
