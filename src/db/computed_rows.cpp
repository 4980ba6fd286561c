#include "db/computed_rows.h"

namespace stelvan::db {

std::vector<jet::RowId> ComputedRows::places() const {
    std::vector<jet::RowId> places;
    places.reserve(rows_.rows.size());
    for (std::size_t at = 0; at < rows_.rows.size(); ++at) {
        places.push_back(jet::RowId::unpack(static_cast<std::int64_t>(at)));
    }
    return places;
}

RowsNow ComputedRows::read(std::span<const jet::RowId> places, std::optional<std::uint64_t>) {
    RowsNow now;
    for (const jet::RowId place : places) {
        now.rows.emplace_back(rows_.rows.at(static_cast<std::size_t>(place.packed())));
    }
    return now;
}

}  // namespace stelvan::db
