// Joined or computed rows: held with their values, not written.
#pragma once

#include "db/row_source.h"
#include "sql/engine.h"

namespace stelvan::db {

class ComputedRows final : public RowSource {
public:
    explicit ComputedRows(sql::ComputedRows rows) : rows_(std::move(rows)) {}

    /// Places are positions.
    [[nodiscard]] std::vector<jet::RowId> places() const;

    [[nodiscard]] const std::vector<std::string>& fields() const override { return rows_.columns; }
    [[nodiscard]] RowsNow read(std::span<const jet::RowId> places,
                               std::optional<std::uint64_t> chosen) override;
    [[nodiscard]] PlacesNow chosenNow() override { return {0, places()}; }
    [[nodiscard]] RowWriter* writer() override { return nullptr; }

private:
    sql::ComputedRows rows_;
};

}  // namespace stelvan::db
