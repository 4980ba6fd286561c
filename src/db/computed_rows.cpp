#include "db/computed_rows.h"

#include <algorithm>

namespace stelvan::db {

std::vector<jet::RowId> ComputedRows::places() const {
    std::vector<jet::RowId> places;
    places.reserve(rows_.rows.size());
    for (std::size_t at = 0; at < rows_.rows.size(); ++at) {
        places.push_back(jet::RowId::unpack(static_cast<std::int64_t>(at)));
    }
    return places;
}

std::vector<std::optional<Row>> ComputedRows::read(std::span<const jet::RowId> places) {
    std::vector<std::optional<Row>> rows;
    for (const jet::RowId place : places) {
        rows.emplace_back(rows_.rows.at(static_cast<std::size_t>(place.packed())));
    }
    return rows;
}

std::vector<jet::RowId> ComputedRows::stillThere(std::vector<jet::RowId> places) {
    std::sort(places.begin(), places.end());
    return places;
}

}  // namespace stelvan::db
