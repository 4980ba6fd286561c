// Models of any size for benchmarks and trials: believable rows, the same for the same sizes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "data/builder/table_text.h"

namespace stelvan::data {

struct ModelSize {
    std::size_t variables = 0;
    std::size_t events = 0;
    std::size_t alarms = 0;
    std::size_t reports = 0;
    std::size_t variablesPerReport = 5;
    std::size_t reportsPerEvent = 2;
};

/// Custom rows only, identifiers from 101; every value obeys the program's rules. The rows of the
/// standard are meant to stand before them.
[[nodiscard]] std::vector<TableRows> generateModel(const ModelSize& size);

/// The variables alone, `first` counting from 0: the 18 cells of each row in the order of the
/// schema.
[[nodiscard]] TableRows generateVariables(std::size_t first, std::size_t count);

}  // namespace stelvan::data
